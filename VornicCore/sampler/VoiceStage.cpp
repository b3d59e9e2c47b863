#include "VornicCore/sampler/VoiceStage.h"

#include <cmath>
#include <numbers>

namespace vornic {

VoiceStage VoiceStage::binaural(float pan, double sampleRate) noexcept {
    const double reach = std::fabs(static_cast<double>(pan));
    constexpr double middle = 0.01;
    if (!(reach > middle)) { // also when pan is not a number
        return none;
    }
    const double amount = reach < 1.0 ? reach : 1.0;
    // The head shadows the far ear from 20 kHz straight ahead down to 6 kHz at the side.
    const double cutoff = 20000.0 - 14000.0 * amount;
    const double lowpass = 1.0 - std::exp(-2.0 * std::numbers::pi * cutoff / sampleRate);
    constexpr std::int32_t left = 1;
    constexpr std::int32_t right = 2;
    return {.itdFrames = static_cast<float>(sampleRate * (amount * maxDelay)),
            .farLowpass = static_cast<float>(lowpass),
            .farEar = pan > 0.0F ? left : right};
}

} // namespace vornic
