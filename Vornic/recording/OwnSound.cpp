#include "Vornic/recording/OwnSound.h"

#include "VornicCore/base/Uuid.h"

#include <map>
#include <utility>

namespace vornic {

namespace {

constexpr const char* colour = "#8E8E93";

StrokeSpec strokeOf(const std::vector<SampleInfo>& samples, LayerPart part) {
    LayerSpec layer;
    layer.part = part;
    for (const SampleInfo& sample : samples) {
        layer.samples.push_back(sample.id);
    }
    return StrokeSpec({std::move(layer)});
}

} // namespace

SoundSpec soundOf(const FinishedImport& finished) {
    SoundSpec sound;
    sound.id = Uuid::random().text();
    sound.name = finished.name;
    sound.colorHex = colour;
    sound.press = strokeOf(finished.samples, LayerPart::bottomOut);
    if (!finished.releases.empty()) {
        sound.release = strokeOf(finished.releases, LayerPart::topOut);
    }
    return sound;
}

void playEverywhere(Board& board, const std::string& sound) {
    if (board.sound(sound) == nullptr) {
        return;
    }
    for (const auto group : allCases<KeyGroup>()) {
        board.groups[group].sound = sound;
    }
    for (auto& [code, assignment] : board.keys) {
        assignment.sound.reset();
    }
    std::erase_if(board.keys, [](const auto& key) { return key.second == Assignment(); });
}

} // namespace vornic
