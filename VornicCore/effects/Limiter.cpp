#include "VornicCore/effects/Limiter.h"

#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <cmath>

namespace vornic {

namespace {

// The least step of the rise: it ends the exponential approach, which alone would never arrive.
constexpr float leastRise = 1e-6F;

// A crest within 0.1 dB of meeting the ceiling.
constexpr float sameCrest = 1.01F;

bool isBelowCeiling(std::size_t frames, const float* sound) VORNIC_REALTIME {
    for (std::size_t i = 0; i < frames; ++i) {
        // A NaN is not below.
        if (!(std::abs(sound[i]) <= Limiter::ceiling)) {
            return false;
        }
    }
    return true;
}

float finiteOrZero(float sample) VORNIC_REALTIME {
    return std::isfinite(sample) ? sample : 0.0F;
}

float cut(float sample) VORNIC_REALTIME {
    return std::clamp(sample, -Limiter::ceiling, Limiter::ceiling);
}

} // namespace

Limiter::Limiter()
    : release_(static_cast<float>(1.0 - std::exp(-1000.0 / (releaseMs * DSP::sampleRate)))) {}

void Limiter::process(std::size_t frames, float* left, float* right) VORNIC_REALTIME {
    if (gain_ == 1.0F && isBelowCeiling(frames, left) && isBelowCeiling(frames, right)) {
        return;
    }
    for (std::size_t i = 0; i < frames; ++i) {
        limit(left[i], right[i]);
    }
}

void Limiter::limit(float& left, float& right) VORNIC_REALTIME {
    left = finiteOrZero(left);
    right = finiteOrZero(right);
    if (hold_ > 0) {
        --hold_;
    } else if (gain_ < 1.0F) {
        gain_ = std::min(gain_ + std::max((1.0F - gain_) * release_, leastRise), 1.0F);
    }
    const float peak = std::max(std::abs(left), std::abs(right));
    if (peak > ceiling) {
        const float needed = std::max(ceiling / peak, lowestGain);
        gain_ = std::min(gain_, needed);
        // Crests of one wave differ by where the samples fall on them: all of them hold the gain.
        if (needed < sameCrest * gain_) {
            hold_ = holdFrames;
        }
    }
    // The cut is for the rounding of the division, and for peaks beyond the lowest gain.
    left = cut(left * gain_);
    right = cut(right * gain_);
}

void Limiter::reset() VORNIC_REALTIME {
    gain_ = 1.0F;
    hold_ = 0;
}

} // namespace vornic
