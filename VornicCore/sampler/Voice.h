#pragma once

#include <cstdint>

namespace vornic {

/// One slot of the sampler: a sample being played, or free. Thread: real-time. `position` starts at
/// 0 and only ever grows by `rate`, which a float can hold exactly. A voice that ends leaves its
/// slot as new: gains and rate tell which key it was.
struct Voice {
    /// The sample's frames; null marks a free slot.
    const float* data = nullptr;
    /// Frames in `data`.
    std::int64_t length = 0;
    /// Read position, in frames.
    double position = 0.0;
    /// Step of the read position per output frame: 1 is the recorded speed.
    double rate = 1.0;
    /// Gains with the pan law applied.
    float gainLeft = 0.0F;
    float gainRight = 0.0F;
    /// Frames of fade-out that remain, -1 = not fading.
    std::int64_t fadeLeft = -1;
    /// The number of voices started up to this one: larger is younger.
    std::uint64_t order = 0;
    /// Delay of the far ear, in frames.
    double itd = 0.0;
    /// As in `VoiceStage`.
    float farLowpass = 0.0F;
    std::int32_t farEar = 0;
    /// State of the far ear's low-pass.
    float farState = 0.0F;
    /// Events queued before the one that started this voice.
    std::uint64_t event = 0;

    bool sounding() const noexcept { return data != nullptr && fadeLeft < 0; }
    bool fading() const noexcept { return data != nullptr && fadeLeft >= 0; }
};

} // namespace vornic
