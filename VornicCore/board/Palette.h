#pragma once

#include "VornicCore/keys/KeyGroup.h"

#include <cstdint>
#include <string_view>

namespace vornic {

/// A colour of a screen, each part from 0 to 255.
struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    /// "#" and six hexadecimal digits; grey where the text is something else. Thread: any.
    static Rgb of(std::string_view hex);

    bool operator==(const Rgb&) const = default;
};

/// How well one colour is seen on the other, from 1 (not at all) to 21 (WCAG 2.1). Thread: any.
double contrast(Rgb one, Rgb other);

/// A keycap: its top and what is printed on it.
struct CapColours {
    Rgb top;
    Rgb legend;

    bool operator==(const CapColours&) const = default;
};

/// What a keyboard looks like. Legends are read on their caps: at least 4.5 to 1. Thread: any.
struct Palette {
    Rgb casing;
    CapColours caps;
    /// The keys around the letters.
    CapColours modifiers;
    /// Return and escape.
    CapColours accents;

    /// The palette of a board by its colour: of its own for those of the boards that come with the
    /// program, and so for the user's copies of them; made from the colour for all others.
    static Palette of(std::string_view colorHex);

    /// The cap on a key.
    const CapColours& on(std::int64_t keyCode) const;

    bool operator==(const Palette&) const = default;
};

} // namespace vornic
