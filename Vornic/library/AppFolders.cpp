#include "Vornic/library/AppFolders.h"

#include <cstdlib>
#include <string>
#include <system_error>

namespace vornic::AppFolders {

namespace fs = std::filesystem;

namespace {

// A relative path counts as unset, as the rules say: it would depend on where the program was
// started.
fs::path base(const char* variable, std::string_view belowHome) {
    const char* const named = std::getenv(variable);
    if (named != nullptr && fs::path(named).is_absolute()) {
        return named;
    }
    const char* const home = std::getenv("HOME");
    return fs::path(home != nullptr && *home != '\0' ? home : "/") / belowHome;
}

fs::path made(fs::path folder) {
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    return folder;
}

} // namespace

fs::path support() {
    return made(base("XDG_DATA_HOME", ".local/share") / "Vornic");
}

fs::path folder(std::string_view name) {
    return made(support() / name);
}

fs::path settingsFile() {
    return base("XDG_CONFIG_HOME", ".config") / "Vornic" / "settings.json";
}

fs::path autostartEntry() {
    return base("XDG_CONFIG_HOME", ".config") / "autostart" / "vornic.desktop";
}

} // namespace vornic::AppFolders
