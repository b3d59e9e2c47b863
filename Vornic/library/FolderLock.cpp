#include "Vornic/library/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace vornic {

// The lock belongs to the open folder, not to the process, so that threads exclude each other too;
// and it needs no file of its own.
FolderLock::FolderLock(const std::filesystem::path& folder)
    : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FolderLock::~FolderLock() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

} // namespace vornic
