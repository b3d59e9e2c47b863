#include "VornicCore/foreign/ForeignPack.h"

#include "VornicCore/base/ReadableText.h"

#include <algorithm>
#include <string_view>

namespace vornic {

namespace {

/// How many bytes the character at `at` takes; 0 if it is none.
std::size_t lengthOfCharacter(std::string_view text, std::size_t at) {
    const auto first = static_cast<unsigned char>(text[at]);
    const std::size_t length = first < 0x80U                     ? 1
                               : first >= 0xc2U && first < 0xe0U ? 2
                               : first >= 0xe0U && first < 0xf0U ? 3
                               : first >= 0xf0U && first < 0xf5U ? 4
                                                                 : 0;
    if (length == 0 || at + length > text.size()) {
        return 0;
    }
    for (std::size_t next = 1; next < length; ++next) {
        if ((static_cast<unsigned char>(text[at + next]) & 0xc0U) != 0x80U) {
            return 0;
        }
    }
    // Overlong forms, halves of pairs and what lies beyond the last character.
    const auto second = static_cast<unsigned char>(length > 1 ? text[at + 1] : 0);
    const bool isWrong = (first == 0xe0U && second < 0xa0U) ||
                         (first == 0xedU && second >= 0xa0U) ||
                         (first == 0xf0U && second < 0x90U) || (first == 0xf4U && second >= 0x90U);
    return isWrong ? 0 : length;
}

} // namespace

std::string plainLine(const std::string& text, std::size_t longest) {
    std::string line;
    for (std::size_t at = 0; at < text.size() && line.size() <= longest;) {
        const std::size_t length = lengthOfCharacter(text, at);
        if (length == 0) {
            line += '?';
            ++at;
        } else {
            const bool breaks = text[at] == '\n' || text[at] == '\r' || text[at] == '\t';
            line += breaks ? " " : text.substr(at, length);
            at += length;
        }
    }
    return readable(line, longest);
}

void addNote(std::vector<std::string>& notes, const std::string& note) {
    constexpr std::size_t longest = 300;
    std::string text = plainLine(note, longest);
    if (notes.size() < PackLimits::mostNotes && std::ranges::find(notes, text) == notes.end()) {
        notes.push_back(std::move(text));
    }
}

void PackNotes::add(const PackNotes& other) {
    const auto append = [](std::vector<std::string>& to, const std::vector<std::string>& from) {
        for (const std::string& note : from) {
            addNote(to, note);
        }
    };
    append(missing, other.missing);
    append(repaired, other.repaired);
    append(ignored, other.ignored);
    append(remarks, other.remarks);
}

} // namespace vornic
