#pragma once

#include <filesystem>
#include <string_view>

/// Where the user's own files are, by the XDG base directory rules. Any thread, while nobody
/// changes the environment.
namespace vornic::AppFolders {

/// "Vornic" in the user's data folder, made if it is missing. Where it cannot be made, whatever is
/// written into it fails and says so.
std::filesystem::path support();

/// A folder in `support`, made if it is missing.
std::filesystem::path folder(std::string_view name);

/// The settings: "Vornic/settings.json" in the user's configuration folder. Nothing is made.
std::filesystem::path settingsFile();

/// The entry that starts the program with the session, in the user's configuration folder. Nothing
/// is made.
std::filesystem::path autostartEntry();

} // namespace vornic::AppFolders
