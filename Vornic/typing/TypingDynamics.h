#pragma once

#include "VornicCore/base/SplitMix64.h"

#include <optional>

namespace vornic {

/// How one stroke differs from a plain one.
struct StrokeShape {
    /// Linear factor.
    float gain = 1.0f;
    /// Playback-rate factor.
    float rate = 1.0f;
    /// Offset of the pan position; strokes do not wander, so it stays 0.
    float pan = 0.0f;

    bool operator==(const StrokeShape&) const = default;
};

/// Follows the typing pace and shapes each stroke by it: fast strokes are softer and a little
/// higher, the first one after a pause is louder and lower. Thread: key, as everything here.
struct TypingDynamics {
    /// Smoothed interval between key-downs, seconds.
    double pace = 0.25;
    /// Shape of the last stroke.
    StrokeShape last;
    /// Time of the last key-down in seconds of a monotonic clock.
    std::optional<double> lastDown;

    /// 0 for a pace of 0.35 s or slower, 1 for 0.08 s or faster.
    double speed() const;

    /// Takes in a key-down at `at` seconds and gives the shape of its stroke.
    StrokeShape down(double at, SplitMix64& generator);

    /// The shape of a stroke at `speed` (0…1); draws the gain first, then the rate.
    static StrokeShape shape(double speed, bool afterPause, SplitMix64& generator);
};

} // namespace vornic
