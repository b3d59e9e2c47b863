#include "Vornic/commands/TypedText.h"

#include "VornicCore/base/SplitMix64.h"
#include "VornicCore/keys/KeyLayout.h"

#include <algorithm>
#include <array>
#include <optional>

namespace vornic {

namespace {

constexpr std::int64_t leftShift = 56;
constexpr std::int64_t rightShift = 60;

struct KeyStroke {
    std::int64_t keyCode;
    bool shifted;
};

struct TypedKey {
    char plain;
    char shifted;
    std::int64_t keyCode;
};

constexpr std::array<TypedKey, 50> typedKeys{{
    {'`', '~', 50}, {'1', '!', 18},  {'2', '@', 19},  {'3', '#', 20}, {'4', '$', 21},
    {'5', '%', 23}, {'6', '^', 22},  {'7', '&', 26},  {'8', '*', 28}, {'9', '(', 25},
    {'0', ')', 29}, {'-', '_', 27},  {'=', '+', 24},  {'\t', 0, 48},  {'q', 'Q', 12},
    {'w', 'W', 13}, {'e', 'E', 14},  {'r', 'R', 15},  {'t', 'T', 17}, {'y', 'Y', 16},
    {'u', 'U', 32}, {'i', 'I', 34},  {'o', 'O', 31},  {'p', 'P', 35}, {'[', '{', 33},
    {']', '}', 30}, {'\\', '|', 42}, {'a', 'A', 0},   {'s', 'S', 1},  {'d', 'D', 2},
    {'f', 'F', 3},  {'g', 'G', 5},   {'h', 'H', 4},   {'j', 'J', 38}, {'k', 'K', 40},
    {'l', 'L', 37}, {';', ':', 41},  {'\'', '"', 39}, {'\n', 0, 36},  {'z', 'Z', 6},
    {'x', 'X', 7},  {'c', 'C', 8},   {'v', 'V', 9},   {'b', 'B', 11}, {'n', 'N', 45},
    {'m', 'M', 46}, {',', '<', 43},  {'.', '>', 47},  {'/', '?', 44}, {' ', 0, 49},
}};

std::optional<KeyStroke> strokeFor(char character) {
    for (const TypedKey& key : typedKeys) {
        if (character == key.plain) {
            return KeyStroke{key.keyCode, false};
        }
        if (key.shifted != 0 && character == key.shifted) {
            return KeyStroke{key.keyCode, true};
        }
    }
    return std::nullopt;
}

/// Everything but the first byte of a UTF-8 character.
bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

double breathAfter(char character) {
    switch (character) {
    case ' ':
        return 35.0;
    case ',':
    case ';':
        return 90.0;
    case '.':
    case '!':
    case '?':
    case '\n':
        return 220.0;
    default:
        return 0.0;
    }
}

class Typist {
  public:
    explicit Typist(std::uint64_t seed) : generator_(seed) {}

    void type(char character, KeyStroke stroke) {
        const std::int64_t shift =
            KeyLayout::pan(stroke.keyCode, 1.0) < 0.0f ? rightShift : leftShift;
        if (stroke.shifted) {
            press(shift);
            now_ += generator_.uniform(45.0, 85.0);
        }
        press(stroke.keyCode);
        release(stroke.keyCode, now_ + generator_.uniform(65.0, 110.0));
        if (stroke.shifted) {
            release(shift, now_ + generator_.uniform(40.0, 105.0));
        }
        // Longer than any hold, so no key goes down again before it went up.
        now_ += generator_.uniform(115.0, 205.0) + breathAfter(character);
    }

    std::vector<KeyEvent> events() && {
        std::ranges::stable_sort(events_, {}, &KeyEvent::millis);
        return std::move(events_);
    }

  private:
    void press(std::int64_t keyCode) { events_.push_back({now_, keyCode, true}); }

    void release(std::int64_t keyCode, double at) { events_.push_back({at, keyCode, false}); }

    SplitMix64 generator_;
    double now_ = 0.0;
    std::vector<KeyEvent> events_;
};

} // namespace

TypedText typeText(std::string_view text, std::uint64_t seed) {
    TypedText typed;
    Typist typist(seed);
    for (const char character : text) {
        if (const auto stroke = strokeFor(character)) {
            typist.type(character, *stroke);
        } else if (!continuesCharacter(character)) {
            ++typed.untypable;
        }
    }
    typed.events = std::move(typist).events();
    return typed;
}

} // namespace vornic
