#pragma once

#include "packs/model/PackTable.h"

#include <filesystem>
#include <string>

namespace vornic::packs {

struct ModelledPack {
    std::size_t written = 0; // strokes
    std::string error;       // empty when the pack was made
};

/// Makes the strokes of `table` and writes them, the typical ones first (`typicalFirst`), as the
/// pack folder `target`, in place of what is there; the manifest comes last, so half a pack is
/// none. One gain for all: the median regular press comes to the table's `pressDb` (`strokeLevel`),
/// lower if any stroke would exceed -1 dBFS.
ModelledPack makePack(const PackTable& table, const std::filesystem::path& target);

} // namespace vornic::packs
