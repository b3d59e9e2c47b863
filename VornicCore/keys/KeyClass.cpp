#include "VornicCore/keys/KeyClass.h"

#include "VornicCore/keys/ModifierKeys.h"

namespace vornic {

KeyClass keyClassOf(std::int64_t keyCode) {
    switch (keyCode) {
    case 36: // return
    case 76: // keypad enter
        return KeyClass::enter;
    case 49:
        return KeyClass::space;
    case 51:  // delete
    case 117: // forward delete
        return KeyClass::backspace;
    default:
        return ModifierKeys::is(keyCode) ? KeyClass::modifier : KeyClass::regular;
    }
}

} // namespace vornic
