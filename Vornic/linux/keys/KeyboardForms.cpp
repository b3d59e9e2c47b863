#include "Vornic/linux/keys/KeyboardForms.h"

#include "VornicCore/keys/KnownKeys.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <string>

namespace vornic {

namespace {

/// Where keyboards for a layout have the ANSI form; most others have the ISO form.
constexpr std::array<std::string_view, 16> ansiLayouts{"us", "cn",     "tw",  "kr", "th", "vn",
                                                       "ph", "my",     "id",  "in", "au", "nz",
                                                       "jp", "custom", "ara", "il"};

} // namespace

KeyboardForm formOfLayout(std::string_view layouts) {
    const std::string_view first = layouts.substr(0, layouts.find_first_of(",("));
    return first.empty() || std::ranges::find(ansiLayouts, first) != ansiLayouts.end()
               ? KeyboardForm::ansi
               : KeyboardForm::iso;
}

KeyboardForm configuredForm(const std::filesystem::path& file) {
    if (const char* const layout = std::getenv("XKB_DEFAULT_LAYOUT")) {
        return formOfLayout(layout);
    }
    constexpr std::string_view name = "XKBLAYOUT=";
    std::ifstream settings(file);
    for (std::string line; std::getline(settings, line);) {
        if (line.starts_with(name)) {
            line.erase(0, name.size());
            std::erase(line, '"');
            return formOfLayout(line);
        }
    }
    return KeyboardForm::ansi;
}

std::int64_t KeyboardForms::keyCode(std::uint32_t keyboard, std::uint32_t evdevCode) {
    if (evdevCode == KEY_102ND) {
        iso_.insert(keyboard);
    }
    if (usual_ == KeyboardForm::ansi && !iso_.contains(keyboard)) {
        return keyCodeOfEvdev(evdevCode);
    }
    // On an ISO keyboard the key left of 1 is the one that an ANSI one lacks, and what that has
    // there stands beside the left Shift.
    switch (evdevCode) {
    case KEY_GRAVE:
        return keyCodeOfEvdev(KEY_102ND);
    case KEY_102ND:
        return keyCodeOfEvdev(KEY_GRAVE);
    default:
        return keyCodeOfEvdev(evdevCode);
    }
}

} // namespace vornic
