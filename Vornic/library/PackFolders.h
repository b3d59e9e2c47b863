#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace vornic {

/// Where sound packs may lie for the program at `executable`, best first: beside an installed
/// program (bin/vornic, share/vornic/Packs) and in the build tree (Vornic/vornic,
/// resources/Packs). With `chosen`, a folder that the user named, only that one; an empty path
/// counts as none. Touches no file. Thread: any, as everything here.
std::vector<std::filesystem::path>
packFolders(const std::filesystem::path& executable,
            const std::optional<std::filesystem::path>& chosen = std::nullopt);

/// The first of `packFolders` that exists, or none.
std::optional<std::filesystem::path>
findPackFolder(const std::filesystem::path& executable,
               const std::optional<std::filesystem::path>& chosen = std::nullopt);

} // namespace vornic
