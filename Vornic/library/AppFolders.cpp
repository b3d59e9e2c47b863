#include "Vornic/library/AppFolders.h"

#include <sys/stat.h>

#include <cerrno>
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
    // Whoever puts a file into it is told why it cannot be there.
    [[maybe_unused]] const std::error_code later = make(folder);
    keepToOwner(folder);
    return folder;
}

} // namespace

std::error_code make(const fs::path& folder) {
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error)) {
        return {};
    }
    fs::create_directories(folder.parent_path(), error);
    if (error) {
        return error;
    }
    // Never open to others, not even for a moment.
    if (::mkdir(folder.c_str(), S_IRWXU) != 0 && !fs::is_directory(folder, error)) {
        return {errno, std::generic_category()};
    }
    return {};
}

void keepToOwner(const fs::path& path) {
    constexpr fs::perms others = fs::perms::group_all | fs::perms::others_all;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::exists(status) && (status.permissions() & others) != fs::perms::none) {
        fs::permissions(path, others, fs::perm_options::remove, error);
    }
}

fs::path support() {
    return made(base("XDG_DATA_HOME", ".local/share") / "Vornic");
}

fs::path folder(std::string_view name) {
    return made(support() / name);
}

fs::path settingsFile() {
    const fs::path folder = base("XDG_CONFIG_HOME", ".config") / "Vornic";
    keepToOwner(folder);
    return folder / "settings.json";
}

fs::path autostartEntry() {
    return base("XDG_CONFIG_HOME", ".config") / "autostart" / "vornic.desktop";
}

} // namespace vornic::AppFolders
