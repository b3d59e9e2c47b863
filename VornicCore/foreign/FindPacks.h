#pragma once

#include "VornicCore/foreign/PackFiles.h"

#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Something that looks like a pack.
struct FoundPack {
    /// Where it lies in what was opened, for the user.
    std::string place;
    /// Absent: it cannot be read, and `error` says why.
    std::optional<ForeignPack> pack;
    std::string error;
};

struct FindOptions {
    /// Of instruments whose notes name no keys: the note of Escape.
    std::optional<int> firstNote;
};

/// Every pack among the files, told by what is in them and not by what they are called; two formats
/// in one folder are two packs. What lies deeper than it should is noted as repaired. Thread: any.
std::vector<FoundPack> findPacks(const PackFiles& files, const FindOptions& options = {});

} // namespace vornic
