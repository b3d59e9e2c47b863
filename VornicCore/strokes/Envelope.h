#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vornic {

/// The loudness of a recording, a figure for every millisecond. Samples at the end that fill no
/// millisecond have none. Thread: any, as everything here.
struct Envelope {
    /// Samples in a frame, at least 1.
    std::int64_t hop = 1;
    /// By frame: the root of the mean square, never 0, and the same in decibels.
    std::vector<double> rms;
    std::vector<double> db;

    /// The number of frames.
    [[nodiscard]] std::int64_t frames() const { return static_cast<std::int64_t>(rms.size()); }
};

/// The envelope of `samples`. The rate, in Hz, must be finite; squares are singles, sums doubles.
Envelope envelopeOf(std::span<const float> samples, double sampleRate);

/// `samples` without what is below 60 Hz (Butterworth, second order): desks and fans rumble there,
/// keys do not. Samples that are no finite number count as 0. The rate, in Hz, is above 0.
std::vector<float> withoutRumble(std::span<const float> samples, double sampleRate);

/// The root of the mean square of the quietest fifth of `samples` (of the quietest one where there
/// are fewer than ten; 0 where there is none): what remains of a recording between the keys. The
/// squares, singles, are added in ascending order as doubles. No sample is NaN.
[[nodiscard]] double quietestFifthRms(std::span<const float> samples);

} // namespace vornic
