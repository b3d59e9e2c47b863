#pragma once

#include "Vornic/recording/DecodePack.h"
#include "Vornic/recording/PackHelper.h"
#include "VornicCore/foreign/ConvertPack.h"
#include "VornicCore/foreign/FindPacks.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Whether the file is a board file, as far as its beginning tells, or nothing that could be read;
/// anything else may be a pack. Thread: any.
bool isBoardFile(const std::filesystem::path& file);

/// Whether it is worth a look for packs: a folder, an archive, or a file with the ending of a
/// description. Reads a few bytes. Thread: any.
bool mayHoldPacks(const std::filesystem::path& path);

/// A sound pack of another program, or what is wrong with it.
struct PackRead {
    std::optional<ConvertedPack> pack;
    /// A sentence, where there is no pack.
    std::string error;
};

/// Every pack in some files, folders and archives, and in the archives of a folder; where one file
/// describes a pack, its folder is looked through for that pack alone. One archive is unpacked at a
/// time. Thread: any; it blocks, for seconds with large packs.
class FoundPacks {
  public:
    struct Entry {
        /// Where it lies in what was named, for the user; empty: it is that.
        std::string place;
        std::string name;
        /// Absent: it cannot be read, and `error` says why.
        std::optional<PackFormat> format;
        std::string error;
    };

    /// Looks, without decoding anything. Throws ForeignPackError where there is nothing to be read
    /// at all, and where a stop was requested.
    FoundPacks(const std::vector<std::filesystem::path>& paths, const PackReadOptions& options);
    FoundPacks(const FoundPacks&) = delete;
    FoundPacks& operator=(const FoundPacks&) = delete;
    ~FoundPacks();

    const std::vector<Entry>& entries() const { return entries_; }

    /// Reads the pack of one entry, after whoever else is reading one.
    PackRead read(std::size_t entry, const PackReadOptions& options);

  private:
    /// A folder or archive, and what of it is wanted.
    struct Source {
        std::filesystem::path path;
        /// How it is called in what the user named; empty: it is that.
        std::string within;
        /// Only the pack that this file describes; empty: all.
        std::string description;
    };

    void look(std::size_t source, const PackReadOptions& options, PackHelper& helper);
    const PackFiles& filesOf(std::size_t source, PackHelper& helper);

    std::mutex reading_;
    std::vector<Source> sources_;
    /// What is open: an archive's files lie on the disk until another one is opened.
    std::unique_ptr<PackFiles> files_;
    std::size_t open_ = 0;

    std::vector<Entry> entries_;
    /// Beside `entries_`.
    std::vector<std::optional<ForeignPack>> packs_;
    std::vector<std::size_t> sourceOf_;
};

} // namespace vornic
