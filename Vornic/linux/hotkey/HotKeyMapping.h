#pragma once

#include "Vornic/linux/x11/X11Connection.h"

#include <cstdint>
#include <optional>

namespace vornic {

/// Where the keyboard mapping of an X server puts Alt+Super+K. Thread: any.
struct HotKeyMapping {
    /// The key in the place of K on a US keyboard, whatever it types.
    xcb_keycode_t keycode = 0;
    /// The modifier bits of Alt and Super together.
    std::uint16_t modifiers = 0;
    /// The modifier bit of Num Lock; 0 where no modifier has it.
    std::uint16_t numLock = 0;

    bool operator==(const HotKeyMapping&) const = default;

    /// Asks the server; nothing where Alt and Super are not modifiers of their own.
    static std::optional<HotKeyMapping> find(const X11Connection& connection);
};

} // namespace vornic
