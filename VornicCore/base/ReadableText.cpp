#include "VornicCore/base/ReadableText.h"

namespace vornic {

namespace {

// UTF-8: the second and later bytes of a character.
bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
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
    std::string result;
    for (std::size_t at = 0; at < end; ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        // The second row of control characters, U+0080 to U+009F, takes two bytes.
        const bool secondRow =
            byte == 0xc2U && at + 1 < end && static_cast<unsigned char>(text[at + 1]) < 0xa0U;
        if (byte < 0x20U || byte == 0x7fU || secondRow) {
            result += '?';
            at += secondRow ? 1 : 0;
        } else {
            result += text[at];
        }
    }
    if (end < text.size()) {
        result += "...";
    }
    return result;
}

} // namespace vornic
