#include "Vornic/library/PackFolders.h"

#include <algorithm>

namespace vornic {

namespace fs = std::filesystem;

std::vector<fs::path> packFolders(const fs::path& executable,
                                  const std::optional<fs::path>& chosen) {
    if (chosen && !chosen->empty()) {
        return {*chosen};
    }
    const fs::path above = executable.parent_path().parent_path();
    return {above / "share/vornic/Packs", above / "resources/Packs"};
}

std::optional<fs::path> findPackFolder(const fs::path& executable,
                                       const std::optional<fs::path>& chosen) {
    const std::vector<fs::path> folders = packFolders(executable, chosen);
    const auto found = std::ranges::find_if(folders, [](const fs::path& folder) {
        std::error_code ignored;
        return fs::is_directory(folder, ignored);
    });
    return found == folders.end() ? std::nullopt : std::optional(*found);
}

} // namespace vornic
