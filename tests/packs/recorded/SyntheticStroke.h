#pragma once

#include <cmath>
#include <random>
#include <vector>

namespace vornic::packs {

/// What a recording of one keystroke is made of.
struct SyntheticStroke {
    double rate = 48000;
    double seconds = 0.3;
    double attackMs = 20; ///< When the stroke begins.
    double amplitude = 0.3;
    double touchMs = -1;  ///< When the finger touches the cap, 10 dB weaker; negative for never.
    double secondMs = -1; ///< When a second stroke begins, 6 dB weaker; negative for never.
    double offset = 0;    ///< A constant added to every sample.
    unsigned seed = 1;
};

/// Noise bursts that decay by half every three milliseconds, over noise at -90 dBFS.
inline std::vector<float> synthesise(const SyntheticStroke& stroke) {
    std::mt19937 random(stroke.seed);
    std::uniform_real_distribution<double> noise(-1, 1);
    const auto burst = [&](double ms, double startMs, double amplitude) {
        return startMs < 0 || ms < startMs ? 0 : amplitude * std::exp2((startMs - ms) / 3);
    };
    std::vector<float> samples;
    const auto count = static_cast<int>(stroke.seconds * stroke.rate);
    for (int i = 0; i < count; ++i) {
        const double ms = 1000 * i / stroke.rate;
        const double envelope = 3e-5 + burst(ms, stroke.attackMs, stroke.amplitude) +
                                burst(ms, stroke.touchMs, stroke.amplitude * 0.316) +
                                burst(ms, stroke.secondMs, stroke.amplitude * 0.5);
        samples.push_back(static_cast<float>(envelope * noise(random) + stroke.offset));
    }
    return samples;
}

} // namespace vornic::packs
