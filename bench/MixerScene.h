#pragma once

#include "VornicCore/base/SplitMix64.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace vornic {

/// The work that every mixer of the benchmark does: as many voices as may sound at once, each with
/// a sample, a pitch and a place of its own.
struct MixerScene {
    static constexpr int voices = 48;
    static constexpr std::int64_t bufferFrames = 128;
    /// Buffers of one round; the samples last longer at every rate.
    static constexpr int buffers = 60;
    static constexpr std::int64_t sampleFrames = 12'000;
    static constexpr double sampleRate = 48'000.0;

    struct Voice {
        std::vector<float> sample;
        float gain;
        float pan;
        float rate;
    };

    static std::vector<Voice> make(std::uint64_t seed) {
        SplitMix64 random(seed);
        std::vector<Voice> scene(voices);
        for (Voice& voice : scene) {
            // A key's noise, dying away, but never to silence.
            double envelope = 1.0;
            for (std::int64_t i = 0; i < sampleFrames; ++i) {
                voice.sample.push_back(static_cast<float>(envelope * random.uniform(-0.5, 0.5)));
                envelope = std::fmax(0.01, envelope * 0.9995);
            }
            voice.gain = static_cast<float>(random.uniform(0.02, 0.1));
            voice.pan = static_cast<float>(random.uniform(-0.85, 0.85));
            // As typing makes them: up to 1.5 semitones away from the recorded pitch, on both
            // sides.
            voice.rate = static_cast<float>(std::exp2(random.uniform(-1.5, 1.5) / 12.0));
        }
        return scene;
    }
};

} // namespace vornic
