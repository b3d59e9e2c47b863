#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace vornic {

/// One keystroke cut from a recording of typing. Thread: any, as everything here.
struct Stroke {
    /// The slice, from the recording without its rumble, mono, at the recording's own rate.
    std::vector<float> samples;
    /// When the key was hit, in seconds from the start of the recording: the onset itself, a little
    /// after the first sample of the slice.
    double start = 0.0;
    /// How far the loudest millisecond rises above the noise of the room, in decibels.
    double snrDb = 0.0;
    /// True when the stroke is long enough (70 ms) and not clipped (peak below 0.99).
    bool clean = false;

    bool operator==(const Stroke&) const = default;
};

} // namespace vornic

/// Equal strokes have equal hashes: 0.0 and -0.0 count as one number.
template <>
struct std::hash<vornic::Stroke> {
    std::size_t operator()(const vornic::Stroke& stroke) const noexcept {
        std::size_t result = 0;
        const auto mix = [&result](std::size_t value) {
            result ^= value + 0x9e3779b97f4a7c15U + (result << 6U) + (result >> 2U);
        };
        for (const float sample : stroke.samples) {
            mix(std::hash<float>()(sample));
        }
        mix(std::hash<double>()(stroke.start));
        mix(std::hash<double>()(stroke.snrDb));
        mix(std::hash<bool>()(stroke.clean));
        return result;
    }
};
