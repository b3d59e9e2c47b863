#pragma once

#include "VornicCore/foreign/FindPacks.h"
#include "VornicCore/foreign/PackRecordings.h"

#include <filesystem>
#include <functional>
#include <stop_token>

namespace vornic {

struct PackReadOptions {
    /// The helper that reads what others made; empty: there is none.
    std::filesystem::path decoder;
    FindOptions find;
    /// Told how much has been read, 0 to 1. Called by whichever thread is reading.
    std::function<void(double)> progress;
    std::stop_token stop;
};

/// The audio files that `pack` uses, decoded by the helper as far as they can be; what cannot goes
/// into `notes` as missing. Thread: any; blocks, for seconds with large packs.
PackAudioFiles decodePack(const ForeignPack& pack, const PackFiles& files,
                          const PackReadOptions& options, PackNotes& notes);

} // namespace vornic
