#include "VornicCore/base/ReadableText.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace vornic {

namespace {

// UTF-8: the second and later bytes of a character.
bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
}

/// A character that is not seen itself, and how many bytes it takes in UTF-8.
struct Unseen {
    std::uint32_t code = 0;
    std::size_t bytes = 0; // 0: the text goes on with a character that is seen
};

bool turnsDirection(std::uint32_t code) {
    return code == 0x061c || code == 0x200e || code == 0x200f ||
           (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
}

/// The line and paragraph separators break a line wherever they stand.
bool breaksLine(std::uint32_t code) {
    return code == 0x2028 || code == 0x2029;
}

Unseen unseenAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t further) -> std::uint32_t {
        return at + further < text.size() ? static_cast<unsigned char>(text[at + further]) : 0U;
    };
    if (byte(0) < 0x20U || byte(0) == 0x7fU) {
        return {.code = byte(0), .bytes = 1};
    }
    // The second row of control characters, U+0080 to U+009F, takes two bytes.
    if (byte(0) == 0xc2U && byte(1) >= 0x80U && byte(1) < 0xa0U) {
        return {.code = byte(1), .bytes = 2};
    }
    const std::uint32_t two = (byte(0) & 0x1fU) << 6U | (byte(1) & 0x3fU);
    if ((byte(0) & 0xe0U) == 0xc0U && turnsDirection(two)) {
        return {.code = two, .bytes = 2};
    }
    const std::uint32_t three =
        (byte(0) & 0x0fU) << 12U | (byte(1) & 0x3fU) << 6U | (byte(2) & 0x3fU);
    if ((byte(0) & 0xf0U) == 0xe0U && (turnsDirection(three) || breaksLine(three))) {
        return {.code = three, .bytes = 3};
    }
    return {};
}

} // namespace

std::string readable(std::string_view text, std::size_t longest) {
    std::size_t end = text.size();
    if (end > longest) {
        end = longest;
        while (end > 0 && continuesCharacter(text[end])) {
            --end;
        }
    }
    const std::string_view shown = text.substr(0, end);
    std::string result;
    for (std::size_t at = 0; at < end;) {
        const Unseen unseen = unseenAt(shown, at);
        result += unseen.bytes > 0 ? '?' : shown[at];
        at += unseen.bytes > 0 ? unseen.bytes : 1;
    }
    if (end < text.size()) {
        result += "...";
    }
    return result;
}

std::string plainlyVisible(std::string_view text, Lines lines) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const Unseen unseen = unseenAt(text, at);
        const bool lineFeed = lines == Lines::kept && text[at] == '\n';
        if (unseen.bytes == 0 || lineFeed) {
            result += text[at];
            ++at;
            continue;
        }
        std::array<char, 16> name{};
        std::snprintf(name.data(), name.size(), "[U+%04X]", static_cast<unsigned>(unseen.code));
        result += name.data();
        at += unseen.bytes;
    }
    return result;
}

} // namespace vornic
