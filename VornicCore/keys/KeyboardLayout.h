#pragma once

#include "VornicCore/keys/LayoutID.h"
#include "VornicCore/keys/LayoutKey.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace vornic {

/// A key code and the text on its key.
struct KeyName {
    std::int64_t code;
    std::string_view label;
};

/// A keyboard as it is drawn, and from which a key's place between left and right is taken.
/// Thread: any.
struct KeyboardLayout {
    LayoutID id = LayoutID::macANSI;
    /// In building order: row by row, left to right.
    std::vector<LayoutKey> keys;
    /// The bounding box of all keys, in key units.
    double width = 0;
    double height = 0;

    /// F1 to F12, in order.
    static constexpr std::array<KeyName, 12> fKeys{{
        {122, "F1"},
        {120, "F2"},
        {99, "F3"},
        {118, "F4"},
        {96, "F5"},
        {97, "F6"},
        {98, "F7"},
        {100, "F8"},
        {101, "F9"},
        {109, "F10"},
        {103, "F11"},
        {111, "F12"},
    }};

    /// Builds one layout. Thread: any; allocates. `layout(id)` gives one that is built already.
    static KeyboardLayout build(LayoutID id);

    /// The first key with that code; null if there is none. Valid as long as the layout.
    const LayoutKey* find(std::int64_t code) const;

    /// Where the middle of the key with that code lies between the left edge (-1) and the right
    /// edge (+1); absent if no key has the code.
    std::optional<double> position(std::int64_t code) const;

    /// The key at a place; null where there is none that can be heard. The left and upper edges of
    /// a key belong to it, the others do not.
    const LayoutKey* at(double x, double y) const;

    /// The codes of all keys that touch the inside of a rectangle.
    std::set<std::int64_t> within(double x, double y, double w, double h) const;

    /// The key nearest to `code` in a direction, each of `right` and `down` -1, 0 or 1: along a row
    /// only keys of that row count, from row to row the nearest row comes first. `code` itself at
    /// the edge; the first key where `code` is not drawn.
    std::int64_t neighbour(std::int64_t code, int right, int down) const;

    bool operator==(const KeyboardLayout&) const = default;
};

/// The layout of that id, built once on first use and shared. Thread: any.
const KeyboardLayout& layout(LayoutID id);

} // namespace vornic
