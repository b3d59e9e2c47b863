#pragma once

#include "Vornic/library/BoardTransfer.h"
#include "Vornic/recording/ReadPacks.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vornic {

/// What was in a file: a board, or several packs. Thread: any, as everything here.
struct FileRead {
    std::optional<ReadBoard> board;
    /// Where the board was made of a pack.
    std::optional<PackReport> report;
    std::shared_ptr<FoundPacks> packs;
};

/// Reads a board file, or the one pack in what is named; several are only found. Throws
/// BoardTransferError and ForeignPackError.
FileRead readFiles(const std::vector<std::filesystem::path>& from, const PackReadOptions& options);

/// Reads one of several packs. Throws the same.
FileRead readPack(FoundPacks& packs, std::size_t place, const PackReadOptions& options);

/// What such work has come to: a problem, or whatever it says itself.
std::optional<BoardTransferError> problemOf(const std::function<void()>& work);

} // namespace vornic
