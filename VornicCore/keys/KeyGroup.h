#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>

namespace vornic {

/// A group of keys, as the user sees them, to which a board can give one assignment.
enum class KeyGroup : std::uint8_t {
    alphas,
    numbers,
    modifiers,
    space,
    enter,
    backspace,
    arrows,
    function
};

template <>
struct CaseNames<KeyGroup> {
    static constexpr std::array names{
        CaseName{KeyGroup::alphas, "alphas", "Alphas"},
        CaseName{KeyGroup::numbers, "numbers", "Numbers"},
        CaseName{KeyGroup::modifiers, "modifiers", "Modifiers"},
        CaseName{KeyGroup::space, "space", "Space"},
        CaseName{KeyGroup::enter, "enter", "Enter"},
        CaseName{KeyGroup::backspace, "backspace", "Backspace"},
        CaseName{KeyGroup::arrows, "arrows", "Arrows"},
        CaseName{KeyGroup::function, "function", "Function row"},
    };
};

/// The key codes of the group `function`: Escape, F1 to F15, help, home, page up, end, page down
/// (not forward delete).
inline constexpr std::array<std::int64_t, 21> functionCodes{53,  122, 120, 99,  118, 96,  97,
                                                            98,  100, 101, 109, 103, 111, 105,
                                                            107, 113, 114, 115, 116, 119, 121};

/// The group of a virtual key code; a code that nobody knows belongs to `alphas`. Tab belongs to
/// `modifiers` on purpose, though it sounds like a regular key. Thread: any, without allocation.
KeyGroup keyGroupOf(std::int64_t keyCode);

} // namespace vornic
