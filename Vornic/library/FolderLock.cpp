#include "Vornic/library/FolderLock.h"

#include "VornicCore/base/ReplaceFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace vornic {

// The lock belongs to the open folder, not to the process, so that threads exclude each other too;
// and it needs no file of its own.
FolderLock::FolderLock(const std::filesystem::path& folder, Busy busy)
    : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ < 0) {
        return;
    }
    const int operation = LOCK_EX | (busy == Busy::giveUp ? LOCK_NB : 0);
    int result = flock(descriptor_, operation);
    while (result != 0 && errno == EINTR) {
        result = flock(descriptor_, operation);
    }
    held_ = result == 0;
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

void removeLeftOvers(const std::filesystem::path& folder) {
    const FolderLock lock(folder, FolderLock::Busy::giveUp);
    if (!lock.held()) {
        return;
    }
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (isBeside(entry->path())) {
            std::error_code ignored;
            std::filesystem::remove(entry->path(), ignored);
        }
    }
}

} // namespace vornic
