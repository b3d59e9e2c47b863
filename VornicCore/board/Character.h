#pragma once

namespace vornic {

/// Four offsets around 0 that bend a sound: deeper, snappier, more ringing, larger. Thread: any.
struct Character {
    double depth = 0;
    double snap = 0;
    double ring = 0;
    double size = 0;

    bool operator==(const Character&) const = default;
};

} // namespace vornic
