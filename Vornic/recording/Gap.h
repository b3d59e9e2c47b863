#pragma once

#include "VornicCore/strokes/Stroke.h"

#include <span>
#include <string>
#include <vector>

namespace vornic {

/// A part of a recording that the computer was too busy to capture; it is silent there.
struct Gap {
    /// Seconds from the start of the recording.
    double start = 0.0;
    /// Seconds.
    double length = 0.0;

    bool operator==(const Gap&) const = default;
};

/// Whether a gap has taken a part of `stroke`, cut at `rate` Hz, or what comes right before it: the
/// end of a gap looks like the beginning of a stroke. Thread: any.
[[nodiscard]] bool isTorn(const Stroke& stroke, double rate, std::span<const Gap> gaps);

/// Tells the user that a recording has gaps; empty when it has none. Thread: any.
[[nodiscard]] std::string noticeOf(std::span<const Gap> gaps);

} // namespace vornic
