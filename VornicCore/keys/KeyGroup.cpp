#include "VornicCore/keys/KeyGroup.h"

#include "VornicCore/keys/ModifierKeys.h"

#include <algorithm>

namespace vornic {

KeyGroup keyGroupOf(std::int64_t keyCode) {
    switch (keyCode) {
    case 18:
    case 19:
    case 20:
    case 21:
    case 22:
    case 23:
    case 25:
    case 26:
    case 28:
    case 29:
        return KeyGroup::numbers;
    case 36: // return
    case 76: // keypad enter
        return KeyGroup::enter;
    case 48: // tab
        return KeyGroup::modifiers;
    case 49:
        return KeyGroup::space;
    case 51:  // delete
    case 117: // forward delete
        return KeyGroup::backspace;
    case 123:
    case 124:
    case 125:
    case 126:
        return KeyGroup::arrows;
    default:
        break;
    }
    if (ModifierKeys::is(keyCode)) {
        return KeyGroup::modifiers;
    }
    if (std::ranges::find(functionCodes, keyCode) != functionCodes.end()) {
        return KeyGroup::function;
    }
    return KeyGroup::alphas;
}

} // namespace vornic
