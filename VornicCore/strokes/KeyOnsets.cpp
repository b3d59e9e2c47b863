#include "VornicCore/strokes/KeyOnsets.h"

#include "VornicCore/realtime/IntegerPart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vornic {

namespace {

constexpr double loudnessWindow = 0.02; // seconds

struct Thresholds {
    double trigger = 0.0;
    double reArm = 0.0;
    double backTrack = 0.0;
};

Thresholds thresholdsOf(const Envelope& envelope) {
    std::vector<double> levels = envelope.db;
    const auto fifth =
        levels.begin() + requireIntegerPart(static_cast<double>(envelope.frames() - 1) * 0.2,
                                            "a recording has too many frames");
    std::nth_element(levels.begin(), fifth, levels.end());
    const double noiseDb = *fifth;
    const double peakDb = *std::max_element(fifth, levels.end());
    const double trigger = std::max(noiseDb + 18.0, peakDb - 38.0);
    return {trigger, trigger - 10.0, noiseDb + 6.0};
}

} // namespace

std::vector<std::int64_t> keyOnsets(const Envelope& envelope) {
    const Thresholds thresholds = thresholdsOf(envelope);
    const std::vector<double>& db = envelope.db;
    std::vector<std::int64_t> onsets;
    bool armed = true;
    for (std::size_t frame = 0; frame < db.size(); ++frame) {
        if (!armed) {
            armed = db[frame] < thresholds.reArm;
        } else if (db[frame] > thresholds.trigger) {
            std::size_t begin = frame;
            while (begin >= 1 && db[begin - 1] < db[begin] &&
                   db[begin - 1] > thresholds.backTrack) {
                --begin;
            }
            onsets.push_back(static_cast<std::int64_t>(begin) * envelope.hop);
            armed = false;
        }
    }
    return onsets;
}

float loudnessAt(std::span<const float> samples, std::int64_t place, double sampleRate) {
    const auto length = static_cast<std::int64_t>(samples.size());
    const std::int64_t end =
        std::min(length, place + requireIntegerPart(sampleRate * loudnessWindow,
                                                    "the rate of a recording is out of range"));
    float loudest = 0.0F;
    for (std::int64_t i = place; i < end; ++i) {
        loudest = std::max(loudest, std::abs(samples[static_cast<std::size_t>(i)]));
    }
    return loudest;
}

} // namespace vornic
