#include "VornicCore/foreign/PackRecordings.h"

#include "VornicCore/base/ReadableText.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/render/JobLimits.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <span>
#include <string_view>

namespace vornic {

namespace {

constexpr std::size_t fadeFrames = 48; // 1 ms
constexpr double millisecond = 48;
/// 60 dB below the peak nobody hears a step.
constexpr float restShare = 0.001F;
/// What is fainter than the last bit of 16 is no sound.
constexpr float silence = 1.0F / 65536;

/// Frames as the file says them, without the risks of a number from anywhere.
std::size_t frameOf(double frames, std::size_t most) {
    return frames > 0
               ? static_cast<std::size_t>(std::min(std::round(frames), static_cast<double>(most)))
               : 0;
}

bool isAtRest(std::span<const float> samples, float limit) {
    return std::ranges::all_of(samples, [&](float x) { return std::abs(x) <= limit; });
}

/// Whether the signal goes on across `place`: it is not at rest on either side.
bool cutsSound(const std::vector<float>& samples, std::size_t place, float limit) {
    const std::size_t before = std::min(place, fadeFrames);
    const std::size_t behind = std::min(samples.size() - place, fadeFrames);
    const std::span<const float> all(samples);
    return before > 0 && behind > 0 && !isAtRest(all.subspan(place - before, before), limit) &&
           !isAtRest(all.subspan(place, behind), limit);
}

std::vector<float> faded(const std::vector<float>& from, std::size_t begin, std::size_t end) {
    std::vector<float> samples(from.begin() + static_cast<std::ptrdiff_t>(begin),
                               from.begin() + static_cast<std::ptrdiff_t>(end));
    const float limit = DSP::peak(samples) * restShare;
    const std::size_t length = std::min(fadeFrames, samples.size() / 2);
    const auto gain = [&](std::size_t step) {
        return static_cast<float>(step) / static_cast<float>(length);
    };
    if (cutsSound(from, begin, limit)) {
        for (std::size_t step = 0; step < length; ++step) {
            samples[step] *= gain(step);
        }
    }
    if (cutsSound(from, end, limit)) {
        for (std::size_t step = 0; step < length; ++step) {
            samples[samples.size() - 1 - step] *= gain(step);
        }
    }
    return samples;
}

/// The renderer's own steps: the strike 1 ms behind the start, then the level of every stroke.
double raisedDbOf(std::vector<float> samples) {
    constexpr double targetDb = -21;
    constexpr double ceilingDb = -2;
    const std::int64_t lead = std::max<std::int64_t>(DSP::onset(samples) - 48, 0);
    samples.erase(samples.begin(), samples.begin() + lead);
    const float before = DSP::peak(samples);
    DSP::level(samples, targetDb, ceilingDb);
    return 20 * std::log10(static_cast<double>(DSP::peak(samples)) / static_cast<double>(before));
}

} // namespace

std::vector<std::string> audioFilesOf(const ForeignPack& pack) {
    std::set<std::string> files;
    const auto add = [&](const ForeignKey& key) {
        for (const auto* const takes : {&key.press, &key.release}) {
            for (const ForeignTake& take : *takes) {
                files.insert(take.file);
            }
        }
    };
    for (const auto& [code, key] : pack.keys) {
        add(key);
    }
    add(pack.fallback);
    return {files.begin(), files.end()};
}

std::optional<PackRecordings::Cut>
PackRecordings::cutOf(const ForeignTake& take, const PackAudio& audio, const std::string& key) {
    const double scale = take.unit == ForeignTake::Unit::milliseconds
                             ? millisecond
                             : DSP::sampleRate / std::max(audio.rate, 1.0);
    const std::size_t length = audio.samples.size();
    Cut cut{frameOf(take.begin * scale, length), length};
    if (take.end) {
        cut.end = frameOf(*take.end * scale, length);
    }
    if (cut.begin >= cut.end) {
        addNote(notes_.missing, "The recording of " + key + " lies behind the end of its file.");
        return std::nullopt;
    }
    if (take.begin < 0) {
        addNote(notes_.repaired, "The recording of " + key + " began before its file does.");
    }
    // A rounded number may end a hair behind the file.
    constexpr double slack = 2 * millisecond;
    if (take.end && *take.end * scale > static_cast<double>(length) + slack) {
        addNote(notes_.repaired, "The recording of " + key + " ends where its file does.");
    }
    if (cut.end - cut.begin > JobLimits::mostFrames) {
        cut.end = cut.begin + JobLimits::mostFrames;
        addNote(notes_.remarks, "The recording of " + key + " is cut after 5 seconds.");
    }
    return cut;
}

std::optional<std::size_t> PackRecordings::add(const ForeignTake& take, const std::string& key) {
    const auto audio = audio_.find(take.file);
    if (audio == audio_.end() || audio->second.samples.empty()) {
        return std::nullopt; // That the file is missing has been said.
    }
    const std::optional<Cut> cut = cutOf(take, audio->second, key);
    if (!cut) {
        return std::nullopt;
    }
    const auto [known, isNew] =
        known_.try_emplace({take.file, {cut->begin, cut->end}}, std::nullopt);
    if (isNew && recordings_.size() < PackLimits::mostTakes) {
        std::vector<float> samples = faded(audio->second.samples, cut->begin, cut->end);
        if (DSP::peak(samples) > silence) {
            known->second = store(std::move(samples));
        }
    }
    if (!known->second) {
        addNote(notes_.ignored, "The recording of " + key + " holds no sound.");
    }
    return known->second;
}

std::size_t PackRecordings::store(std::vector<float> samples) {
    const std::string_view bytes(reinterpret_cast<const char*>(samples.data()),
                                 samples.size() * sizeof(float));
    const std::size_t hash = std::hash<std::string_view>()(bytes);
    const auto [first, last] = equal_.equal_range(hash);
    for (auto each = first; each != last; ++each) {
        if (recordings_[each->second].samples == samples) {
            return each->second;
        }
    }
    const double raisedDb = raisedDbOf(samples);
    recordings_.push_back({std::move(samples), std::isfinite(raisedDb) ? raisedDb : 0});
    equal_.emplace(hash, recordings_.size() - 1);
    return recordings_.size() - 1;
}

} // namespace vornic
