#pragma once

#include <string_view>
#include <vector>

namespace vornic::packs {

/// Where a key sits: x from -1 (left edge of the board) to 1, y from -1 (space row) to 1 (numbers).
struct KeyPlace {
    double x;
    double y;
};

/// The keys whose strokes a pack holds, by the word that begins their files: the 26 letters for
/// "regular" and "release", the same keys in the same order; 6 strokes each for "space", "enter"
/// and "backspace"; the 8 modifiers. None for any other word.
std::vector<KeyPlace> keyPlaces(std::string_view keyClass);

} // namespace vornic::packs
