#pragma once

#include "VornicCore/base/SplitMix64.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <vector>

namespace vornic {

/// A recording made for a test: quiet noise, and decaying bursts as hits.
class TypingNoise {
  public:
    TypingNoise(double seconds, double rate, float noise, std::uint64_t seed = 1)
        : rate_(rate), random_(seed), samples_(static_cast<std::size_t>(seconds * rate)) {
        for (float& x : samples_) {
            x = noise * value();
        }
    }

    /// Adds a hit at `seconds`: a tone of 2 kHz that begins at its peak, `level`, and falls by 60
    /// dB within `decay` seconds. All hits have one shape.
    TypingNoise& hit(double seconds, float level, double decay = 0.05) {
        const auto start = static_cast<std::size_t>(seconds * rate_);
        for (std::size_t i = start; i < samples_.size(); ++i) {
            const double age = static_cast<double>(i - start) / rate_;
            const auto gain = static_cast<float>(std::pow(10.0, -3.0 * age / decay));
            if (gain < 1e-5F) {
                break;
            }
            const auto shape = static_cast<float>(std::cos(4000.0 * std::numbers::pi * age));
            samples_[i] += level * gain * shape;
        }
        return *this;
    }

    [[nodiscard]] const std::vector<float>& samples() const { return samples_; }

  private:
    float value() { return static_cast<float>(random_.uniform(-1.0, 1.0)); }

    double rate_; // Hz
    SplitMix64 random_;
    std::vector<float> samples_;
};

} // namespace vornic
