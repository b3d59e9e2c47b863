#include "VornicCore/foreign/PackText.h"

#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/keys/KnownKeys.h"

#include <nlohmann/json.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

/// Takes out the commas behind which an object or an array ends. True if there were any.
bool removeCommasTooMany(std::string& text) {
    std::string result;
    result.reserve(text.size());
    std::size_t comma = std::string::npos; // the last one, with nothing but blanks behind it
    bool inString = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char letter = text[at];
        if (inString) {
            result += letter;
            if (letter == '\\' && at + 1 < text.size()) {
                result += text[++at];
            }
            inString = letter != '"';
            continue;
        }
        if ((letter == '}' || letter == ']') && comma != std::string::npos) {
            result.erase(comma, 1);
            comma = std::string::npos;
        } else if (letter == ',') {
            comma = result.size();
        } else if (letter != ' ' && letter != '\t' && letter != '\n' && letter != '\r') {
            comma = std::string::npos;
        }
        inString = letter == '"';
        result += letter;
    }
    const bool changed = result.size() != text.size();
    text = std::move(result);
    return changed;
}

void appendUtf8(std::string& text, std::uint32_t character) {
    if (character < 0x80U) {
        text += static_cast<char>(character);
    } else if (character < 0x800U) {
        text += static_cast<char>(0xc0U | character >> 6U);
        text += static_cast<char>(0x80U | (character & 0x3fU));
    } else {
        text += static_cast<char>(0xe0U | character >> 12U);
        text += static_cast<char>(0x80U | (character >> 6U & 0x3fU));
        text += static_cast<char>(0x80U | (character & 0x3fU));
    }
}

std::string fromUtf16(std::string_view text, bool bigEndian) {
    std::string result;
    for (std::size_t at = 2; at + 1 < text.size(); at += 2) {
        const std::uint32_t first = static_cast<unsigned char>(text[at]);
        const std::uint32_t second = static_cast<unsigned char>(text[at + 1]);
        const std::uint32_t unit = bigEndian ? first << 8U | second : second << 8U | first;
        // Pairs stand for characters that no key, file or format is named with.
        const bool isHalf = unit >= 0xd800U && unit < 0xe000U;
        appendUtf8(result, isHalf ? std::uint32_t{'?'} : unit);
    }
    return result;
}

} // namespace

std::string withoutMark(std::string text, PackNotes& notes) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        addNote(notes.repaired, "A byte order mark was taken out.");
        return text.substr(3);
    }
    const bool bigEndian = text.starts_with("\xFE\xFF");
    if (bigEndian || text.starts_with("\xFF\xFE")) {
        addNote(notes.repaired, "A byte order mark was taken out: the text is UTF-16.");
        return fromUtf16(text, bigEndian);
    }
    return text;
}

nlohmann::json parseHandWrittenJson(std::string text, PackNotes& notes) {
    text = withoutMark(std::move(text), notes);
    if (removeCommasTooMany(text)) {
        addNote(notes.repaired, "A comma too many was taken out.");
    }
    return parseJson(text, {.lastOfEqualMembers = true});
}

std::string stringMember(const nlohmann::json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_string()
               ? std::string(trimmed(found->get_ref<const std::string&>()))
               : std::string();
}

std::optional<double> numberOf(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(value)
               ? std::optional(value)
               : std::nullopt;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos
               ? std::string_view()
               : text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

std::vector<std::string> expandedRange(const std::string& name) {
    const std::size_t open = name.find('{');
    const std::size_t dash = name.find('-', open == std::string::npos ? 0 : open);
    const std::size_t close = name.find('}', open == std::string::npos ? 0 : open);
    if (open == std::string::npos || dash == std::string::npos || close == std::string::npos ||
        dash > close) {
        return {name};
    }
    unsigned first = 0;
    unsigned last = 0;
    const char* const text = name.data();
    const auto head = std::from_chars(text + open + 1, text + dash, first);
    const auto tail = std::from_chars(text + dash + 1, text + close, last);
    if (head.ec != std::errc() || head.ptr != text + dash || tail.ec != std::errc() ||
        tail.ptr != text + close || last < first || last - first >= PackLimits::mostTakesOfKey) {
        return {name};
    }
    std::vector<std::string> names;
    for (unsigned number = first; number <= last; ++number) {
        names.push_back(name.substr(0, open) + std::to_string(number) + name.substr(close + 1));
    }
    return names;
}

std::optional<std::int64_t> keyCodeOfHookCode(std::int64_t code) {
    // The low byte is a scan code of the first set; the high byte marks the extended ones.
    using Extended = std::pair<std::int64_t, std::uint32_t>;
    static constexpr std::array extended = std::to_array<Extended>({
        {0x0d, 117}, {0x1c, 96},  {0x1d, 97},  {0x20, 113}, {0x2e, 114}, {0x30, 115},
        {0x35, 98},  {0x37, 99},  {0x38, 100}, {0x45, 119}, {0x47, 102}, {0x48, 103},
        {0x49, 104}, {0x4b, 105}, {0x4d, 106}, {0x4f, 107}, {0x50, 108}, {0x51, 109},
        {0x52, 110}, {0x53, 111}, {0x5b, 125}, {0x5c, 126}, {0x5d, 127},
    });
    const std::int64_t high = code >> 8;
    const std::int64_t low = code & 0xff;
    if (high == 0x0e || high == 0xe0 || high == 0xee) {
        for (const auto& [scan, evdev] : extended) {
            if (scan == low) {
                return keyCodeOfEvdev(evdev);
            }
        }
        return std::nullopt;
    }
    if ((code >= 1 && code <= 83) || code == 86 || code == 87 || code == 88) {
        return keyCodeOfEvdev(static_cast<std::uint32_t>(code));
    }
    if (code >= 91 && code <= 93) { // F13 to F15
        return keyCodeOfEvdev(static_cast<std::uint32_t>(code - 91 + 183));
    }
    return std::nullopt;
}

} // namespace vornic
