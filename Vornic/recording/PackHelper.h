#pragma once

#include "Vornic/recording/HelperProcess.h"
#include "VornicCore/foreign/FindPacks.h"
#include "VornicCore/foreign/PackFiles.h"

#include <filesystem>
#include <memory>
#include <stop_token>
#include <utility>
#include <vector>

namespace vornic {

/// Has the archives and descriptions of sound packs read by the helper, which what is wrong with
/// them may end, and nothing else. Thread: any, one at a time.
class PackHelper {
  public:
    /// `program` is the helper; empty: there is none, and nothing can be read.
    PackHelper(std::filesystem::path program, std::stop_token stop)
        : program_(std::move(program)), stop_(std::move(stop)) {}

    /// An ArchiveReader. Throws ForeignPackError.
    void readArchive(const FileToRead& file, ArchiveSink& sink);

    /// What the function of that name finds. Throws ForeignPackError.
    std::vector<FoundPack> findPacks(const PackFiles& files, const FindOptions& options);

  private:
    HelperProcess& give(HelperDuty duty, int descriptor);
    void readFrames(HelperProcess& helper, ArchiveSink& sink);

    std::filesystem::path program_;
    std::stop_token stop_;
    std::unique_ptr<HelperProcess> helper_;
};

} // namespace vornic
