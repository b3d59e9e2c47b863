#pragma once

#include "VornicCore/keys/KeyboardLayout.h"

#include <cstdint>
#include <optional>

/// Where a key stands between left and right, and how far its pitch is off. Thread: any, without
/// allocation.
namespace vornic::KeyLayout {

/// The horizontal middle of the key on a standard board 14.5 units wide; absent for a key that the
/// standard board lacks.
std::optional<double> column(std::int64_t keyCode);

/// The key's playback-rate factor: one of nine steps of 0.004 between 0.984 and 1.016, always the
/// same for the same key.
float rate(std::int64_t keyCode);

/// The key's pan from its column, -0.85 to +0.85; 0 for a key without one. `width` is the stereo
/// width, clamped to 0…1; a width that is not a number gives a pan that is none.
float pan(std::int64_t keyCode, double width);

/// The key's pan from its place on `layout`, or from its column if the layout lacks the key.
float pan(std::int64_t keyCode, double width, const KeyboardLayout& layout);

} // namespace vornic::KeyLayout
