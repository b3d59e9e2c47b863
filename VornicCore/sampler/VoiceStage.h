#pragma once

#include <cstdint>

namespace vornic {

/// Where the binaural stage puts a voice: the far ear hears it later and duller. Thread: any.
struct VoiceStage {
    /// The largest delay between the ears, in seconds.
    static constexpr double maxDelay = 0.00066;

    /// Delay of the far ear, in frames at the sampler's rate.
    float itdFrames = 0.0F;
    /// Coefficient of the one-pole low-pass on the far ear, 0 = no filter.
    float farLowpass = 0.0F;
    /// 0 = no binaural processing, 1 = the left ear is the far ear, 2 = the right ear is.
    std::int32_t farEar = 0;

    /// No binaural processing.
    static const VoiceStage none;

    /// The stage for a key at `pan`, -1 (left) to 1 (right); `none` in the middle.
    static VoiceStage binaural(float pan, double sampleRate) noexcept;

    bool operator==(const VoiceStage&) const = default;
};

inline constexpr VoiceStage VoiceStage::none{};

} // namespace vornic
