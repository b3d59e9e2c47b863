#include "VornicCore/sampler/EarlyReflection.h"

#include "VornicCore/realtime/IntegerPart.h"

#include <bit>
#include <cstddef>

namespace vornic {

namespace {

std::int64_t framesIn(double seconds, double sampleRate) noexcept {
    return requireIntegerPart(sampleRate * seconds, "sample rate out of range");
}

} // namespace

EarlyReflection::EarlyReflection(double sampleRate) noexcept
    : delay1_(framesIn(0.0025, sampleRate)), delay2_(framesIn(0.0055, sampleRate)) {}

// A delay beyond the history wraps onto a more recent frame, which is accepted: it needs a sample
// rate above 186 kHz.
float EarlyReflection::echoBefore(std::int64_t frames) const VORNIC_REALTIME {
    static_assert(std::has_single_bit(static_cast<std::uint64_t>(echoLength)));
    const auto index = static_cast<std::uint64_t>(echoWrite_ - frames) &
                       static_cast<std::uint64_t>(echoLength - 1);
    return echo_[index];
}

void EarlyReflection::process(std::int64_t frames, float* left, float* right, float level,
                              float damp) VORNIC_REALTIME {
    for (std::int64_t i = 0; i < frames; ++i) {
        echo_[static_cast<std::size_t>(echoWrite_)] = (left[i] + right[i]) * 0.5F;
        if (level > 0.0F) {
            const float a = echoState1_ + damp * (echoBefore(delay1_) - echoState1_);
            echoState1_ = a;
            const float b = echoState2_ + damp * 0.7F * (echoBefore(delay2_) - echoState2_);
            echoState2_ = b;
            left[i] += level * (a + 0.6F * b);
            right[i] += level * (0.9F * a + 0.7F * b);
        }
        echoWrite_ = (echoWrite_ + 1) & (echoLength - 1);
    }
}

void EarlyReflection::clear() VORNIC_REALTIME {
    echo_.fill(0.0F);
    echoState1_ = 0.0F;
    echoState2_ = 0.0F;
}

} // namespace vornic
