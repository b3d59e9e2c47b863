#include "VornicCore/keys/KnownKeys.h"

#include <algorithm>
#include <array>

namespace vornic {

namespace {

constexpr std::array keys = std::to_array<KnownKey>({
    // Letters.
    {12, 16, "KeyQ", "q"},
    {13, 17, "KeyW", "w"},
    {14, 18, "KeyE", "e"},
    {15, 19, "KeyR", "r"},
    {17, 20, "KeyT", "t"},
    {16, 21, "KeyY", "y"},
    {32, 22, "KeyU", "u"},
    {34, 23, "KeyI", "i"},
    {31, 24, "KeyO", "o"},
    {35, 25, "KeyP", "p"},
    {0, 30, "KeyA", "a"},
    {1, 31, "KeyS", "s"},
    {2, 32, "KeyD", "d"},
    {3, 33, "KeyF", "f"},
    {5, 34, "KeyG", "g"},
    {4, 35, "KeyH", "h"},
    {38, 36, "KeyJ", "j"},
    {40, 37, "KeyK", "k"},
    {37, 38, "KeyL", "l"},
    {6, 44, "KeyZ", "z"},
    {7, 45, "KeyX", "x"},
    {8, 46, "KeyC", "c"},
    {9, 47, "KeyV", "v"},
    {11, 48, "KeyB", "b"},
    {45, 49, "KeyN", "n"},
    {46, 50, "KeyM", "m"},
    // Digits.
    {18, 2, "Digit1", "1 num1 d1 key1"},
    {19, 3, "Digit2", "2 num2 d2 key2"},
    {20, 4, "Digit3", "3 num3 d3 key3"},
    {21, 5, "Digit4", "4 num4 d4 key4"},
    {23, 6, "Digit5", "5 num5 d5 key5"},
    {22, 7, "Digit6", "6 num6 d6 key6"},
    {26, 8, "Digit7", "7 num7 d7 key7"},
    {28, 9, "Digit8", "8 num8 d8 key8"},
    {25, 10, "Digit9", "9 num9 d9 key9"},
    {29, 11, "Digit0", "0 num0 d0 key0"},
    // Punctuation.
    {50, 41, "Backquote", "` grave tilde ~ graveaccent backtick"},
    {27, 12, "Minus", "- dash hyphen"},
    {24, 13, "Equal", "= equals plus"},
    {33, 26, "BracketLeft", "[ leftbracket openbracket"},
    {30, 27, "BracketRight", "] rightbracket closebracket closedbracket"},
    {42, 43, "Backslash", "\\ oem5"},
    {41, 39, "Semicolon", ";"},
    {39, 40, "Quote", "' apostrophe"},
    {10, 86, "IntlBackslash", "< oem102 iso"},
    {43, 51, "Comma", ","},
    {47, 52, "Period", ". dot"},
    {44, 53, "Slash", "/ forwardslash"},
    // Whitespace and editing; Insert lies where the help key does.
    {49, 57, "Space", "spacebar"},
    {36, 28, "Enter", "return"},
    {48, 15, "Tab", ""},
    {53, 1, "Escape", "esc"},
    {51, 14, "Backspace", "back bksp"},
    {117, 111, "Delete", "del forwarddelete"},
    {114, 110, "Insert", "ins help"},
    // Navigation.
    {115, 102, "Home", ""},
    {119, 107, "End", ""},
    {116, 104, "PageUp", "pgup prior"},
    {121, 109, "PageDown", "pgdn pgdown next"},
    {123, 105, "ArrowLeft", "left leftarrow"},
    {124, 106, "ArrowRight", "right rightarrow"},
    {125, 108, "ArrowDown", "down downarrow"},
    {126, 103, "ArrowUp", "up uparrow"},
    {110, 127, "ContextMenu", "menu apps application"},
    // Modifiers: Alt is option and the logo key command.
    {56, 42, "ShiftLeft", "shift shiftl leftshift lshift"},
    {60, 54, "ShiftRight", "shiftr rightshift rshift"},
    {59, 29, "ControlLeft", "control ctrl ctrll controll leftctrl leftcontrol lctrl lcontrol"},
    {62, 97, "ControlRight", "ctrlr controlr rightctrl rightcontrol rctrl rcontrol"},
    {58, 56, "AltLeft", "alt altl leftalt lalt option optionleft leftoption"},
    {61, 100, "AltRight", "altr rightalt ralt altgr altgraph optionright rightoption"},
    {55, 125, "MetaLeft",
     "meta cmd cmdl command leftcommand metal leftmeta lmeta super superl win lwin leftwin osleft "
     "leftsuper"},
    {54, 126, "MetaRight",
     "cmdr rightcommand metar rightmeta rmeta superr rwin rightwin osright rightsuper"},
    {57, 58, "CapsLock", "caps capital"},
    {63, 464, "Fn", "function"},
    // Keypad; Num Lock lies where the clear key does.
    {82, 82, "Numpad0", "kp0 keypad0"},
    {83, 79, "Numpad1", "kp1 keypad1"},
    {84, 80, "Numpad2", "kp2 keypad2"},
    {85, 81, "Numpad3", "kp3 keypad3"},
    {86, 75, "Numpad4", "kp4 keypad4"},
    {87, 76, "Numpad5", "kp5 keypad5"},
    {88, 77, "Numpad6", "kp6 keypad6"},
    {89, 71, "Numpad7", "kp7 keypad7"},
    {91, 72, "Numpad8", "kp8 keypad8"},
    {92, 73, "Numpad9", "kp9 keypad9"},
    {65, 83, "NumpadDecimal",
     "kpdecimal kpdelete kpdot numpadperiod numpaddot keypaddecimal decimal"},
    {76, 96, "NumpadEnter", "kpreturn kpenter keypadenter numpadreturn"},
    {69, 78, "NumpadAdd", "kpplus kpadd numpadplus keypadadd add"},
    {78, 74, "NumpadSubtract", "kpminus kpsubtract numpadminus keypadsubtract subtract"},
    {67, 55, "NumpadMultiply", "kpmultiply keypadmultiply numpadasterisk multiply"},
    {75, 98, "NumpadDivide", "kpdivide keypaddivide numpadslash divide"},
    {81, 117, "NumpadEqual", "kpequal keypadequal"},
    {71, 69, "NumLock", "clear"},
    // Function keys.
    {122, 59, "F1", ""},
    {120, 60, "F2", ""},
    {99, 61, "F3", ""},
    {118, 62, "F4", ""},
    {96, 63, "F5", ""},
    {97, 64, "F6", ""},
    {98, 65, "F7", ""},
    {100, 66, "F8", ""},
    {101, 67, "F9", ""},
    {109, 68, "F10", ""},
    {103, 87, "F11", ""},
    {111, 88, "F12", ""},
    {105, 183, "F13", ""},
    {107, 184, "F14", ""},
    {113, 185, "F15", ""},
    {106, 186, "F16", ""},
    {64, 187, "F17", ""},
    {79, 188, "F18", ""},
    {80, 189, "F19", ""},
    {90, 190, "F20", ""},
    // Keys that only have a code of the kernel's.
    {1099, 99, "PrintScreen", "printscreen print prtsc prtscn snapshot sysrq"},
    {1070, 70, "ScrollLock", "scroll"},
    {1119, 119, "Pause", "break"},
    // Sound.
    {74, 113, "AudioVolumeMute", "mute volumemute mediavolumemute"},
    {73, 114, "AudioVolumeDown", "volumedown mediavolumedown"},
    {72, 115, "AudioVolumeUp", "volumeup mediavolumeup"},
    // Keys of Japanese keyboards; the last two are eisu and kana.
    {93, 124, "IntlYen", "yen"},
    {94, 89, "IntlRo", "ro"},
    {95, 121, "NumpadComma", "kpcomma"},
    {102, 123, "Lang2", "hanja eisu"},
    {104, 122, "Lang1", "hangul hangeul kana"},
});

/// In lower case, without what only joins words; a lone joining character is the name of a key.
std::string plain(std::string_view name) {
    std::string text;
    for (const char letter : name) {
        const bool joins = letter == '_' || letter == ' ' || letter == '-';
        if (letter >= 'A' && letter <= 'Z') {
            text += static_cast<char>(letter - 'A' + 'a');
        } else if (!joins || name.size() == 1) {
            text += letter;
        }
    }
    return text;
}

bool isAmong(std::string_view names, std::string_view wanted) {
    while (!names.empty()) {
        const std::size_t end = std::min(names.find(' '), names.size());
        if (names.substr(0, end) == wanted) {
            return true;
        }
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return false;
}

template <typename Matches>
std::optional<std::int64_t> codeOfFirst(const Matches& matches) {
    const auto* const found = std::ranges::find_if(keys, matches);
    return found != keys.end() ? std::optional(found->code) : std::nullopt;
}

} // namespace

std::span<const KnownKey> knownKeys() {
    return keys;
}

std::int64_t keyCodeOfEvdev(std::uint32_t evdev) {
    const auto* const found = std::ranges::find(keys, evdev, &KnownKey::evdev);
    return found != keys.end() ? found->code
                               : firstForeignKeyCode + static_cast<std::int64_t>(evdev);
}

std::optional<std::int64_t> keyCodeOfWebName(std::string_view name) {
    return codeOfFirst([&](const KnownKey& key) { return key.web == name; });
}

std::optional<std::int64_t> keyCodeOfAnyName(std::string_view name) {
    const std::string wanted = plain(name);
    return codeOfFirst([&](const KnownKey& key) {
        return plain(key.web) == wanted || isAmong(key.others, wanted);
    });
}

std::string webNameOf(std::int64_t keyCode) {
    const auto* const found = std::ranges::find(keys, keyCode, &KnownKey::code);
    return found != keys.end() ? std::string(found->web) : "Key" + std::to_string(keyCode);
}

} // namespace vornic
