#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace vornic {

using Buffer = std::vector<float>;

inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

/// Parameter values that no caller should pass, and any may.
inline constexpr std::array hostileValues{notANumber, infinity, -infinity, 1e300,
                                          -1e300,     -1.0,     0.0,       5e-324};

inline Buffer noise(std::size_t count, float level, std::uint_fast32_t seed = 1) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(-level, level);
    Buffer result(count);
    for (float& x : result) {
        x = value(random);
    }
    return result;
}

inline Buffer sine(std::size_t count, double hz, double level) {
    Buffer result(count);
    for (std::size_t i = 0; i < count; ++i) {
        result[i] = static_cast<float>(
            level * std::sin(2.0 * std::numbers::pi * hz * static_cast<double>(i) / 48000.0));
    }
    return result;
}

/// A strike that decays, like a key's.
inline Buffer stroke(std::size_t count = 9600) {
    Buffer result = noise(count, 1.0F, 3);
    for (std::size_t i = 0; i < count; ++i) {
        result[i] *= std::exp(-static_cast<float>(i) / 960.0F);
    }
    return result;
}

/// The amplitude and phase of `hz` in `samples`: their Fourier sum, not normalised.
inline std::complex<double> fourier(const Buffer& samples, double hz) {
    std::complex<double> sum = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        sum += static_cast<double>(samples[i]) *
               std::polar(1.0, -2.0 * std::numbers::pi * hz * static_cast<double>(i) / 48000.0);
    }
    return sum;
}

inline float largest(const Buffer& samples) {
    float result = 0.0F;
    for (const float x : samples) {
        result = std::max(result, std::abs(x));
    }
    return result;
}

} // namespace vornic
