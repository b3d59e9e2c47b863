#include "Vornic/linux/desktop/AutostartEntry.h"

#include "VornicCore/base/ReadFile.h"
#include "VornicCore/base/ReplaceFile.h"

#include <cstdint>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

/// A desktop entry is some hundred bytes.
constexpr std::uintmax_t largestEntry = 65536;

/// A path as the "Exec" key takes it: in quotes, with what is special there escaped, and the
/// escapes escaped once more, since the file has escapes of its own.
std::string execArgument(std::string_view path) {
    std::string text = "\"";
    for (const char character : path) {
        switch (character) {
        case '"':
        case '`':
        case '$':
            text += "\\\\";
            break;
        case '\\':
            text += "\\\\\\";
            break;
        case '%':
            text += '%';
            break;
        default:
            break;
        }
        text += character;
    }
    return text + "\"";
}

} // namespace

AutostartEntry::AutostartEntry(std::filesystem::path entry, std::filesystem::path program)
    : entry_(std::move(entry)), program_(std::move(program)) {}

bool AutostartEntry::enabled() const {
    std::string text;
    try {
        text = readTextFile(entry_, largestEntry);
    } catch (const ReadError&) {
        return false;
    }
    std::istringstream file(text);
    bool there = false;
    for (std::string line; std::getline(file, line);) {
        there = there || line.starts_with("Exec=");
        if (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false") {
            return false;
        }
    }
    return there;
}

std::error_code AutostartEntry::setEnabled(bool on) {
    std::error_code error;
    if (!on) {
        std::filesystem::remove(entry_, error);
        return error;
    }
    std::filesystem::create_directories(entry_.parent_path(), error);
    if (error) {
        return error;
    }
    const std::string text = "[Desktop Entry]\n"
                             "Type=Application\n"
                             "Name=Vornic\n"
                             "Comment=The sound of a mechanical keyboard\n"
                             "Exec=" +
                             execArgument(program_.string()) +
                             "\n"
                             "X-GNOME-Autostart-enabled=true\n";
    return tryReplaceFile(entry_, std::as_bytes(std::span(text)));
}

} // namespace vornic
