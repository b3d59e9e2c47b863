#pragma once

#include <vector>

namespace vornic::DSP {

/// The lowest pitch shift of resample(), in semitones: six octaves, 64 times the length.
inline constexpr double lowestPitch = -72.0;

/// `samples` played back at 2^(semitones/12) of their rate, with a Catmull-Rom cubic between them:
/// positive semitones raise and shorten. Shifts below `lowestPitch` count as that. A copy if
/// `semitones` is 0 or not a number, or there are fewer than 2 samples.
[[nodiscard]] std::vector<float> resample(const std::vector<float>& samples, double semitones);

} // namespace vornic::DSP
