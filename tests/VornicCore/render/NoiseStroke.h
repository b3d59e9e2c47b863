#pragma once

#include "VornicCore/base/SplitMix64.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vornic {

/// Noise that strikes after `before` frames and dies away with a time constant of 25 ms.
inline std::vector<float> noiseStroke(std::uint64_t seed, std::size_t frames = 9600,
                                      std::size_t before = 200) {
    SplitMix64 generator(seed);
    std::vector<float> samples(frames);
    for (std::size_t n = 0; n < frames; ++n) {
        const double noise = generator.uniform(-1, 1);
        const double since = static_cast<double>(n) - static_cast<double>(before);
        const double level = since < 0 ? 1e-3 : 0.6 * std::exp(-since / 1200);
        samples[n] = static_cast<float>(noise * level);
    }
    return samples;
}

} // namespace vornic
