#include "Vornic/linux/hotkey/HotKeyMapping.h"

#include <xcb/xcb_keysyms.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <span>

namespace vornic {

namespace {

// Keysyms, as the X protocol numbers them.
constexpr xcb_keysym_t symbolNumLock = 0xFF7F;
constexpr std::array<xcb_keysym_t, 2> symbolsAlt{0xFFE9, 0xFFEA};
constexpr std::array<xcb_keysym_t, 2> symbolsSuper{0xFFEB, 0xFFEC};

/// The key in the place of K, whatever the layout puts there: as on a keyboard that is read.
constexpr xcb_keycode_t keycodeInPlaceOfK = 45;

struct FreeKeySymbols {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};

/// A server's keymap and its eight modifiers, each with the keys that set it.
class Keymap {
  public:
    explicit Keymap(const X11Connection& connection)
        : symbols_(xcb_key_symbols_alloc(connection.get())),
          modifiers_(xcb_get_modifier_mapping_reply(
              connection.get(), xcb_get_modifier_mapping(connection.get()), nullptr)) {}

    bool known() const { return symbols_ && modifiers_; }

    /// The bit of the first modifier that a key with one of `symbols` sets; 0 if none does. Shift,
    /// Lock and Control have fixed places; Mod1 to Mod5 hold what the keymap puts there.
    std::uint16_t modifierOf(std::span<const xcb_keysym_t> symbols) const {
        const std::size_t keys = modifiers_->keycodes_per_modifier;
        const std::span keycodes(xcb_get_modifier_mapping_keycodes(modifiers_.get()), 8 * keys);
        for (std::size_t modifier = XCB_MAP_INDEX_1; modifier <= XCB_MAP_INDEX_5; ++modifier) {
            const bool has = std::ranges::any_of(
                keycodes.subspan(modifier * keys, keys), [&](xcb_keycode_t keycode) {
                    return keycode != 0 &&
                           std::ranges::find(
                               symbols, xcb_key_symbols_get_keysym(symbols_.get(), keycode, 0)) !=
                               symbols.end();
                });
            if (has) {
                return static_cast<std::uint16_t>(1U << modifier);
            }
        }
        return 0;
    }

  private:
    std::unique_ptr<xcb_key_symbols_t, FreeKeySymbols> symbols_;
    X11Owned<xcb_get_modifier_mapping_reply_t> modifiers_;
};

} // namespace

std::optional<HotKeyMapping> HotKeyMapping::find(const X11Connection& connection) {
    const Keymap keymap(connection);
    if (!keymap.known()) {
        return std::nullopt;
    }
    const unsigned alt = keymap.modifierOf(symbolsAlt);
    const unsigned super = keymap.modifierOf(symbolsSuper);
    // Where one bit stands for both, a grab of it would take Alt+K from everybody.
    if (alt == 0 || super == 0 || alt == super) {
        return std::nullopt;
    }
    return HotKeyMapping{.keycode = keycodeInPlaceOfK,
                         .modifiers = static_cast<std::uint16_t>(alt | super),
                         .numLock = keymap.modifierOf(std::span(&symbolNumLock, 1))};
}

} // namespace vornic
