#include "Vornic/linux/keymap/XkbLegends.h"

#include "VornicCore/keys/KnownKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <array>
#include <utility>

namespace vornic {

namespace {

/// X numbers keys from 8 on.
constexpr std::uint32_t firstKeycode = 8;
constexpr std::uint32_t rightAlt = 100;

/// What a dead key puts over the next letter, alone.
constexpr std::array deadKeys = std::to_array<std::pair<xkb_keysym_t, const char*>>({
    {XKB_KEY_dead_grave, "`"},
    {XKB_KEY_dead_acute, "´"},
    {XKB_KEY_dead_circumflex, "^"},
    {XKB_KEY_dead_tilde, "~"},
    {XKB_KEY_dead_macron, "¯"},
    {XKB_KEY_dead_breve, "˘"},
    {XKB_KEY_dead_abovedot, "˙"},
    {XKB_KEY_dead_diaeresis, "¨"},
    {XKB_KEY_dead_abovering, "°"},
    {XKB_KEY_dead_doubleacute, "˝"},
    {XKB_KEY_dead_caron, "ˇ"},
    {XKB_KEY_dead_cedilla, "¸"},
    {XKB_KEY_dead_ogonek, "˛"},
});

std::string utf8(xkb_keysym_t symbol) {
    std::array<char, 8> text{};
    return xkb_keysym_to_utf8(symbol, text.data(), text.size()) > 0 ? std::string(text.data()) : "";
}

/// What is printed on a key that types `symbol`; empty where that cannot be seen.
std::string printed(xkb_keysym_t symbol) {
    for (const auto& [dead, mark] : deadKeys) {
        if (symbol == dead) {
            return mark;
        }
    }
    // No keyboard has a capital ß.
    const xkb_keysym_t capital = symbol == XKB_KEY_ssharp ? symbol : xkb_keysym_to_upper(symbol);
    std::string text = utf8(capital);
    const bool seen = !text.empty() && static_cast<unsigned char>(text.front()) > ' ' &&
                      text.front() != '\x7f' && text != "\u00a0";
    return seen ? text : "";
}

std::optional<xkb_keysym_t> symbolOf(xkb_keymap& keymap, std::uint32_t evdev,
                                     xkb_layout_index_t group) {
    const xkb_keycode_t key = evdev + firstKeycode;
    const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(&keymap, key);
    if (groups == 0) {
        return std::nullopt;
    }
    const xkb_keysym_t* symbols = nullptr;
    const int count =
        xkb_keymap_key_get_syms_by_level(&keymap, key, group < groups ? group : 0, 0, &symbols);
    return count == 1 ? std::optional(symbols[0]) : std::nullopt;
}

} // namespace

KeyLegends legendsOf(xkb_keymap& keymap, xkb_layout_index_t group) {
    KeyLegends legends = pcLegends();
    for (const KnownKey& key : knownKeys()) {
        // The keypad's digits are on level 1 behind Num Lock, and the same on every keyboard.
        if (legends.contains(key.evdev) || key.web.starts_with("Numpad")) {
            continue;
        }
        if (const auto symbol = symbolOf(keymap, key.evdev, group)) {
            if (std::string text = printed(*symbol); !text.empty()) {
                legends[key.evdev] = std::move(text);
            }
        }
    }
    if (symbolOf(keymap, rightAlt, group) == XKB_KEY_ISO_Level3_Shift) {
        legends[rightAlt] = "AltGr";
    }
    return legends;
}

std::optional<KeyLegends> legendsOfLayout(const std::string& name) {
    const std::size_t open = name.find('(');
    const std::string layout = name.substr(0, open);
    const std::string variant = open == std::string::npos || name.back() != ')'
                                    ? ""
                                    : name.substr(open + 1, name.size() - open - 2);
    // What it has to say about an unknown layout is said by the caller.
    const XkbOwned<xkb_context> context(
        xkb_context_new(static_cast<xkb_context_flags>(XKB_CONTEXT_NO_ENVIRONMENT_NAMES)));
    if (!context || layout.empty()) {
        return std::nullopt;
    }
    xkb_context_set_log_fn(context.get(), [](xkb_context*, xkb_log_level, const char*, va_list) {});
    const xkb_rule_names names{.rules = "evdev",
                               .model = "pc105",
                               .layout = layout.c_str(),
                               .variant = variant.c_str(),
                               .options = ""};
    const XkbOwned<xkb_keymap> keymap(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    return keymap ? std::optional(legendsOf(*keymap, 0)) : std::nullopt;
}

} // namespace vornic
