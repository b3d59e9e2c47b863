#pragma once

#include "VornicCore/keys/LayoutID.h"
#include "VornicCore/keys/LayoutKey.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vornic {

/// A key code and the text on its key.
struct KeyName {
    std::int64_t code;
    std::string_view label;
};

/// A keyboard as it is drawn, and from which a key's place between left and right is taken.
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

    /// Builds one layout. Any thread; allocates. `layout(id)` gives one that is built already.
    static KeyboardLayout build(LayoutID id);

    /// The first key with that code; null if there is none. Valid as long as the layout.
    const LayoutKey* find(std::int64_t code) const;

    /// Where the middle of the key with that code lies between the left edge (-1) and the right
    /// edge (+1); absent if no key has the code.
    std::optional<double> position(std::int64_t code) const;

    bool operator==(const KeyboardLayout&) const = default;
};

/// The layout of that id, built once on first use and shared. Any thread.
const KeyboardLayout& layout(LayoutID id);

} // namespace vornic
