#include "Vornic/commands/KeyFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace vornic {

namespace {

constexpr std::string_view blanks = " \t\r\f\v";

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> found;
    while (true) {
        const auto start = line.find_first_not_of(blanks);
        if (start == std::string_view::npos) {
            return found;
        }
        line.remove_prefix(start);
        const auto length = std::min(line.find_first_of(blanks), line.size());
        found.push_back(line.substr(0, length));
        line.remove_prefix(length);
    }
}

template <typename Number>
bool readWhole(std::string_view text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && stop == end;
}

[[noreturn]] void complain(std::size_t line, const std::string& what) {
    throw KeyFileError("line " + std::to_string(line) + ": " + what);
}

KeyEvent parseEvent(const std::vector<std::string_view>& fields, std::size_t line) {
    if (fields.size() != 3) {
        complain(line, "expected milliseconds, down or up, and a key code");
    }
    KeyEvent event;
    if (!readWhole(fields[0], event.millis) || !std::isfinite(event.millis) || event.millis < 0.0) {
        complain(line, "\"" + std::string(fields[0]) + "\" is no time in milliseconds");
    }
    if (event.millis > longestKeyFileMillis) {
        complain(line, "a key file may last one hour at most");
    }
    if (fields[1] != "down" && fields[1] != "up") {
        complain(line, "\"" + std::string(fields[1]) + "\" is neither down nor up");
    }
    event.down = fields[1] == "down";
    if (!readWhole(fields[2], event.keyCode)) {
        complain(line, "\"" + std::string(fields[2]) + "\" is no key code");
    }
    return event;
}

} // namespace

std::vector<KeyEvent> parseKeyFile(std::string_view text) {
    std::vector<KeyEvent> events;
    std::size_t line = 0;
    while (!text.empty()) {
        ++line;
        const auto end = std::min(text.find('\n'), text.size());
        std::string_view content = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        content = content.substr(0, content.find('#'));
        const auto fields = words(content);
        if (!fields.empty()) {
            events.push_back(parseEvent(fields, line));
        }
    }
    std::ranges::stable_sort(events, {}, &KeyEvent::millis);
    return events;
}

} // namespace vornic
