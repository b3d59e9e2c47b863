#pragma once

#include "VornicCore/foreign/ConvertPack.h"
#include "VornicCore/foreign/FindPacks.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

namespace vornic {

/// Whether the file is a board file, as far as its beginning tells, or nothing that could be read;
/// anything else may be a pack. Thread: any.
bool isBoardFile(const std::filesystem::path& file);

/// A sound pack of another program, or what is wrong with it.
struct PackRead {
    /// What was opened, or what lies in it, for the user.
    std::string place;
    std::optional<ConvertedPack> pack;
    /// A sentence, where there is no pack.
    std::string error;
};

struct PackReadOptions {
    /// The helper that decodes audio; empty: there is none.
    std::filesystem::path decoder;
    FindOptions find;
    /// Told how much has been read, 0 to 1. Called by the reading thread.
    std::function<void(double)> progress;
    std::stop_token stop;
};

/// Reads every pack in a file, a folder or an archive, and in the archives of a folder; where one
/// file describes a pack, its folder is read for that pack alone. `take` gets them one after the
/// other, so that they need not be in memory together, and no more of them after a stop is
/// requested. Throws ForeignPackError where there is nothing to be read at all. Thread: any;
/// blocks, for seconds with large packs, and calls `take` itself.
void readPacks(const std::filesystem::path& path, const PackReadOptions& options,
               const std::function<void(PackRead)>& take);

} // namespace vornic
