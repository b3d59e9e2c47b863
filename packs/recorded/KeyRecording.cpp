#include "packs/recorded/KeyRecording.h"

#include <cstddef>

namespace vornic::packs {

namespace {

constexpr unsigned pauseKey = 0x77;

KeyClass classOfKernelCode(unsigned code) {
    switch (code) {
    case 0x39:
        return KeyClass::space;
    case 0x1c: // Enter
    case 0x60: // keypad Enter
        return KeyClass::enter;
    case 0x0e: // Backspace
    case 0x6f: // Delete
        return KeyClass::backspace;
    case 0x1d: // left Control
    case 0x2a: // left Shift
    case 0x36: // right Shift
    case 0x38: // left Alt
    case 0x3a: // Caps Lock
    case 0x5b: // left Windows key by its set-1 code; the recording is that of 0x7d
    case 0x61: // right Control
    case 0x64: // right Alt
    case 0x7d: // left Windows key
    case 0x7e: // right Windows key
        return KeyClass::modifier;
    default:
        return KeyClass::regular;
    }
}

// The number that hexadecimal digits, lower case, stand for.
std::optional<unsigned> codeOf(std::string_view digits) {
    unsigned code = 0;
    for (const char digit : digits) {
        const std::size_t value = std::string_view("0123456789abcdef").find(digit);
        if (value == std::string_view::npos) {
            return std::nullopt;
        }
        code = code * 16 + static_cast<unsigned>(value);
    }
    return code;
}

} // namespace

std::optional<KeyRecording> keyRecordingNamed(std::string_view fileName) {
    constexpr std::size_t length = 8; // "1e-1.wav"
    if (fileName.size() != length || fileName[2] != '-' || !fileName.ends_with(".wav")) {
        return std::nullopt;
    }
    const auto code = codeOf(fileName.substr(0, 2));
    if (!code) {
        return std::nullopt;
    }
    const char value = fileName[3];
    if (value != '0' && value != '1') {
        return std::nullopt;
    }
    const bool isPress = value == '1' || *code == pauseKey;
    return KeyRecording{.keyClass = classOfKernelCode(*code),
                        .stroke = isPress ? Stroke::press : Stroke::release};
}

} // namespace vornic::packs
