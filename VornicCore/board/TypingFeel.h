#pragma once

namespace vornic {

/// How typing shapes the strokes. Thread: any.
struct TypingFeel {
    /// How strongly the pace does; 0 not at all, 1 fully.
    double speedSensitivity = 0.6;
    /// The amount of random spread between strokes.
    double variation = 0.5;
    /// How much the keys differ in level and colour, as those of a real keyboard do: 0 not at all,
    /// 1 fully.
    double keysDiffer = 0;

    bool operator==(const TypingFeel&) const = default;
};

} // namespace vornic
