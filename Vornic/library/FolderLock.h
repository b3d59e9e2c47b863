#pragma once

#include <cstdint>
#include <filesystem>

namespace vornic {

/// Keeps other threads and programs that ask for the same lock out of a folder, for as long as it
/// lives. Where the file system knows no locks, it keeps nobody out. Thread: any.
class FolderLock {
  public:
    /// What to do while somebody else has the lock.
    enum class Busy : std::uint8_t { wait, giveUp };

    explicit FolderLock(const std::filesystem::path& folder, Busy busy = Busy::wait);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// Whether nobody else has it.
    bool held() const { return held_; }

  private:
    int descriptor_;
    bool held_ = false;
};

/// Removes from a folder what replacements of files that were cut short have left there, unless
/// somebody is writing there. Thread: any.
void removeLeftOvers(const std::filesystem::path& folder);

} // namespace vornic
