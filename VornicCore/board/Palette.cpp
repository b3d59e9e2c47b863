#include "VornicCore/board/Palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace vornic {

namespace {

constexpr Rgb black{0, 0, 0};
constexpr Rgb white{255, 255, 255};

constexpr Rgb rgb(unsigned hex) {
    return {static_cast<std::uint8_t>(hex >> 16U & 255U),
            static_cast<std::uint8_t>(hex >> 8U & 255U), static_cast<std::uint8_t>(hex & 255U)};
}

struct Drawn {
    Rgb colour;
    Palette palette;
};

/// After keyboards that people know, by the colours of the boards that come with the program.
constexpr std::array drawn{
    // Night blue, with a violet return.
    Drawn{rgb(0x5E5CE6),
          {.casing = rgb(0x1E1C3C),
           .caps = {rgb(0x45417C), white},
           .modifiers = {rgb(0x302D57), rgb(0xD6D4F2)},
           .accents = {rgb(0x8E8CFF), black}}},
    // Sage and milk.
    Drawn{rgb(0x30D158),
          {.casing = rgb(0x9DBBA6),
           .caps = {rgb(0xF2F6F0), rgb(0x2C4434)},
           .modifiers = {rgb(0xC9DECF), rgb(0x22382A)},
           .accents = {rgb(0x4F9A68), black}}},
    // Office beige, yellowed in the sun.
    Drawn{rgb(0x63E6E2),
          {.casing = rgb(0xC4BCA6),
           .caps = {rgb(0xEDE8DA), rgb(0x3B382F)},
           .modifiers = {rgb(0xD2CAB6), rgb(0x3B382F)},
           .accents = {rgb(0x3E9C9A), black}}},
    // A typewriter: steel around black.
    Drawn{rgb(0xFFD60A),
          {.casing = rgb(0x9A9EA4),
           .caps = {rgb(0x2B2C2F), rgb(0xF3EFE2)},
           .modifiers = {rgb(0x44464B), rgb(0xF3EFE2)},
           .accents = {rgb(0xE9BE16), black}}},
    // White on red.
    Drawn{rgb(0xFF375F),
          {.casing = rgb(0xB3273F),
           .caps = {rgb(0xFAF7F5), rgb(0x33262A)},
           .modifiers = {rgb(0x3A3237), rgb(0xFAF7F5)},
           .accents = {rgb(0xFF6B85), black}}},
    // Ivory and pebble grey, with a plum of its own.
    Drawn{rgb(0xBF5AF2),
          {.casing = rgb(0xD9D1BE),
           .caps = {rgb(0xF6F1E3), rgb(0x3A352B)},
           .modifiers = {rgb(0xB9B4AB), rgb(0x26231D)},
           .accents = {rgb(0x9A63BE), black}}},
};

std::optional<unsigned> digit(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? std::optional(static_cast<unsigned>(lower - 'a') + 10U)
                                        : std::nullopt;
}

double luminance(Rgb colour) {
    const auto linear = [](std::uint8_t part) {
        const double v = part / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) +
           0.0722 * linear(colour.blue);
}

Rgb mix(Rgb from, Rgb to, double share) {
    const auto part = [share](std::uint8_t a, std::uint8_t b) {
        return static_cast<std::uint8_t>(std::lround(a + (b - a) * share));
    };
    return {part(from.red, to.red), part(from.green, to.green), part(from.blue, to.blue)};
}

/// What is read on a cap: one of the two always is.
CapColours cap(Rgb top) {
    return {top, contrast(top, white) >= contrast(top, black) ? white : black};
}

/// A dark keyboard of a dark colour, a pale one of a bright colour.
Palette madeFrom(Rgb colour) {
    const bool bright = luminance(colour) > 0.35;
    return bright ? Palette{.casing = mix(colour, black, 0.42),
                            .caps = cap(mix(colour, white, 0.86)),
                            .modifiers = cap(mix(colour, white, 0.55)),
                            .accents = cap(colour)}
                  : Palette{.casing = mix(colour, black, 0.74),
                            .caps = cap(mix(colour, black, 0.4)),
                            .modifiers = cap(mix(colour, black, 0.6)),
                            .accents = cap(mix(colour, white, 0.3))};
}

} // namespace

Rgb Rgb::of(std::string_view hex) {
    constexpr std::size_t digits = 6;
    constexpr Rgb none = rgb(0x808080);
    if (hex.size() != digits + 1 || hex.front() != '#') {
        return none;
    }
    unsigned value = 0;
    for (const char each : hex.substr(1)) {
        const auto next = digit(each);
        if (!next) {
            return none;
        }
        value = value << 4U | *next;
    }
    return rgb(value);
}

double contrast(Rgb one, Rgb other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

Palette Palette::of(std::string_view colorHex) {
    const Rgb colour = Rgb::of(colorHex);
    const auto* const found = std::ranges::find(drawn, colour, &Drawn::colour);
    return found != drawn.end() ? found->palette : madeFrom(colour);
}

const CapColours& Palette::on(std::int64_t keyCode) const {
    constexpr std::int64_t escape = 53;
    if (keyCode == escape) {
        return accents;
    }
    switch (keyGroupOf(keyCode)) {
    case KeyGroup::alphas:
    case KeyGroup::numbers:
    case KeyGroup::space:
        return caps;
    case KeyGroup::enter:
        return accents;
    case KeyGroup::modifiers:
    case KeyGroup::backspace:
    case KeyGroup::arrows:
    case KeyGroup::function:
        return modifiers;
    }
    return caps;
}

} // namespace vornic
