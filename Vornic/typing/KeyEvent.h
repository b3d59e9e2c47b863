#pragma once

#include <cstdint>

namespace vornic {

/// One key going down or up. Thread: any.
struct KeyEvent {
    /// Milliseconds from the start of a sequence.
    double millis = 0.0;
    /// Virtual key code.
    std::int64_t keyCode = 0;
    /// True for a press, false for a release.
    bool down = true;

    bool operator==(const KeyEvent&) const = default;
};

} // namespace vornic
