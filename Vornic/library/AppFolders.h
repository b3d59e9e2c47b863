#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

/// Where the user's own files are, by the XDG base directory rules, and that they are the user's
/// alone: what somebody types on, and recordings of a room, are nobody else's. Thread: any, while
/// nobody changes the environment.
namespace vornic::AppFolders {

/// Makes a folder that nobody but the user can enter, and those above it if they are missing. One
/// that is there stays as it is.
std::error_code make(const std::filesystem::path& folder);

/// Takes the rights to a file or a folder from everybody but its owner. Nothing happens where there
/// is none, or it is somebody else's.
void keepToOwner(const std::filesystem::path& path);

/// "Vornic" in the user's data folder, made if it is missing. Where it cannot be made, whatever is
/// written into it fails and says so. It and the folders in it are narrowed to the user.
std::filesystem::path support();

/// A folder in `support`, made if it is missing.
std::filesystem::path folder(std::string_view name);

/// The settings: "Vornic/settings.json" in the user's configuration folder. Nothing is made; a
/// folder that is there is narrowed to the user.
std::filesystem::path settingsFile();

/// The entry that starts the program with the session, in the user's configuration folder. Nothing
/// is made.
std::filesystem::path autostartEntry();

} // namespace vornic::AppFolders
