#pragma once

#include <span>

namespace vornic::DSP {

/// How strong a stroke that sounds alone is to the ear: the mean square of its first 400 ms behind
/// the K weighting of ITU-R BS.1770-4, whose window for the momentary loudness is that long. A
/// stroke that is shorter is followed by silence. Mono at DSP::sampleRate.
[[nodiscard]] double weightedPower(std::span<const float> samples) noexcept;

/// That power as loudness of one channel, in LUFS; minus infinity for none.
[[nodiscard]] double loudnessOfPower(double power) noexcept;

} // namespace vornic::DSP
