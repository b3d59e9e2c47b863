#pragma once

#include <filesystem>

namespace vornic {

/// Keeps other threads and programs that ask for the same lock out of a folder, for as long as it
/// lives. Waits for them. Where the file system knows no locks, it keeps nobody out.
class FolderLock {
  public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    int descriptor_;
};

} // namespace vornic
