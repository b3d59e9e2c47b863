#include "bench/RenderBenchBoard.h"

#include "VornicCore/base/SplitMix64.h"
#include "VornicCore/render/PartSamples.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace vornic {

namespace {

constexpr std::array<const char*, 5> sounds{"keys", "space", "enter", "back", "mods"};
constexpr int recordingsPerSound = 12;

std::vector<float> stroke(std::uint64_t seed, std::size_t frames) {
    SplitMix64 generator(seed);
    std::vector<float> samples(frames);
    for (std::size_t n = 0; n < frames; ++n) {
        const double level = 0.5 * std::exp(-static_cast<double>(n) / 1300);
        samples[n] = static_cast<float>(level * generator.uniform(-1, 1));
    }
    return samples;
}

std::string recordingName(const std::string& sound, int number) {
    return "bench/" + sound + "-" + std::to_string(number);
}

StrokeSpec press(const std::string& sound) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(recordingsPerSound));
    for (int number = 0; number < recordingsPerSound; ++number) {
        names.push_back(recordingName(sound, number));
    }
    ChainParams chain = ChainParams::neutral();
    chain.eq = Equalizer({{Equalizer::Band::bass, 5.0F},
                          {Equalizer::Band::body, 2.0F},
                          {Equalizer::Band::clack, 1.0F},
                          {Equalizer::Band::click, -2.0F},
                          {Equalizer::Band::air, -3.0F}});
    chain.lowPassHz = 15000;
    chain.attackDb = 2;
    chain.sustainDb = -3;
    chain.bodyModes = {{.frequency = 480, .decayMs = 40, .gainDb = -2},
                       {.frequency = 1150, .decayMs = 25, .gainDb = -6}};
    chain.bodyMix = 0.3;
    chain.damping = 0.3;
    chain.drive = 0.2;
    chain.pitch = -0.5;
    return StrokeSpec({LayerSpec(LayerPart::bottomOut, names, 0, 0, -1)}, chain);
}

} // namespace

BenchSource::BenchSource() {
    constexpr std::size_t frames = 9600;
    std::uint64_t seed = 1;
    for (const char* const sound : sounds) {
        for (int number = 0; number < recordingsPerSound; ++number) {
            recordings_[recordingName(sound, number)] = stroke(seed++, frames);
        }
    }
    recordings_[std::string(PartSamples::clickKey)] = PartSamples::click(stroke(seed++, frames));
    recordings_[std::string(PartSamples::springKey)] = PartSamples::spring(stroke(seed++, frames));
    recordings_[std::string(PartSamples::rattleKey)] = PartSamples::rattle(stroke(seed++, frames));
}

std::optional<std::vector<float>> BenchSource::samples(const std::string& id) const {
    const auto found = recordings_.find(id);
    return found == recordings_.end() ? std::nullopt : std::optional(found->second);
}

Board benchBoard() {
    std::vector<SoundSpec> specs;
    specs.reserve(std::size(sounds));
    std::map<KeyGroup, Assignment> groups;
    for (const char* const sound : sounds) {
        specs.push_back(SoundSpec(sound, sound, "#000000", press(sound), std::nullopt,
                                  SwitchParts{}, Character{}));
    }
    const auto assign = [&](KeyGroup group, const char* sound) {
        Assignment assignment;
        assignment.sound = sound;
        groups[group] = assignment;
    };
    assign(KeyGroup::alphas, "keys");
    assign(KeyGroup::space, "space");
    assign(KeyGroup::enter, "enter");
    assign(KeyGroup::backspace, "back");
    assign(KeyGroup::modifiers, "mods");
    return Board("bench", "Bench", "", "#000000", BuildParts{}, specs, groups);
}

} // namespace vornic
