#pragma once

#include "VornicCore/keys/KeyboardLayout.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

// The rows that every layout has.
inline constexpr std::array<KeyName, 10> numberRow{{
    {18, "1"},
    {19, "2"},
    {20, "3"},
    {21, "4"},
    {23, "5"},
    {22, "6"},
    {26, "7"},
    {28, "8"},
    {25, "9"},
    {29, "0"},
}};
inline constexpr std::array<KeyName, 10> topRow{{
    {12, "Q"},
    {13, "W"},
    {14, "E"},
    {15, "R"},
    {17, "T"},
    {16, "Y"},
    {32, "U"},
    {34, "I"},
    {31, "O"},
    {35, "P"},
}};
inline constexpr std::array<KeyName, 9> homeRow{{
    {0, "A"},
    {1, "S"},
    {2, "D"},
    {3, "F"},
    {5, "G"},
    {4, "H"},
    {38, "J"},
    {40, "K"},
    {37, "L"},
}};
inline constexpr std::array<KeyName, 7> bottomRow{{
    {6, "Z"},
    {7, "X"},
    {8, "C"},
    {9, "V"},
    {11, "B"},
    {45, "N"},
    {46, "M"},
}};

/// A row of keys while a layout is built: each key is put where the one before it ends.
/// Thread: any, as everything here.
struct Row {
    std::vector<LayoutKey> keys;
    /// The left edge of the next key.
    double x = 0;
    /// The top of the row.
    double y = 0;
    /// The height of its keys.
    double h = 1;

    Row(double left, double top, double height) : x(left), y(top), h(height) {}

    /// Appends a key and moves on by its width.
    Row& add(std::optional<std::int64_t> code, std::string_view label, double w = 1) {
        return add(code, label, w, y, h);
    }

    /// Appends a key that has a top and a height of its own.
    Row& add(std::optional<std::int64_t> code, std::string_view label, double w, double keyTop,
             double keyHeight) {
        keys.push_back({code, std::string(label), x, keyTop, w, keyHeight});
        x += w;
        return *this;
    }

    /// Appends keys of width 1.
    Row& add(std::span<const KeyName> names) {
        for (const KeyName& name : names) {
            add(name.code, name.label);
        }
        return *this;
    }

    /// Leaves a gap: the next key begins at `left`.
    Row& skipTo(double left) {
        x = left;
        return *this;
    }
};

/// The rows of the two MacBook layouts.
std::vector<Row> macBookRows(bool iso);

/// The rows of the layouts `sixty`, `sixtyFive`, `seventyFive`, `tkl` and `full`.
std::vector<Row> mechanicalRows(LayoutID id);

} // namespace vornic
