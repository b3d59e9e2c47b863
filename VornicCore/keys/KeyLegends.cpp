#include "VornicCore/keys/KeyLegends.h"

#include "VornicCore/keys/KnownKeys.h"

#include <algorithm>
#include <optional>

namespace vornic {

namespace {

constexpr std::int64_t leftOfOne = 50;
constexpr std::int64_t isoExtra = 10;

std::int64_t placeCode(std::int64_t code, const KeyboardLayout& layout) {
    if (layout.find(isoExtra) == nullptr) {
        return code;
    }
    return code == leftOfOne ? isoExtra : code == isoExtra ? leftOfOne : code;
}

std::optional<std::uint32_t> placeOf(std::int64_t code) {
    const auto keys = knownKeys();
    const auto found = std::ranges::find(keys, code, &KnownKey::code);
    return found == keys.end() ? std::nullopt : std::optional(found->evdev);
}

} // namespace

const KeyLegends& pcLegends() {
    static const KeyLegends legends{
        {1, "Esc"},
        {14, "Backspace"},
        {15, "Tab"},
        {28, "Enter"},
        {29, "Ctrl"},
        {42, "Shift"},
        {54, "Shift"},
        {56, "Alt"},
        {58, "Caps"},
        {69, "Num"},
        {96, "Enter"},
        {97, "Ctrl"},
        {100, "Alt"},
        {102, "Home"},
        {104, "PgUp"},
        {107, "End"},
        {109, "PgDn"},
        {110, "Ins"},
        {111, "Del"},
        {125, "Super"},
        {126, "Super"},
        {127, "Menu"},
        // Japanese keyboards alone have this key, and it types a backslash.
        {124, "¥"},
    };
    return legends;
}

std::string legendOf(const LayoutKey& key, const KeyboardLayout& layout,
                     const KeyLegends& legends) {
    if (!key.code) {
        return key.label;
    }
    const auto place = placeOf(placeCode(*key.code, layout));
    const auto found = place ? legends.find(*place) : legends.end();
    return found == legends.end() ? key.label : found->second;
}

} // namespace vornic
