#include "VornicCore/base/ReplaceFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <string>
#include <string_view>

namespace vornic {

namespace {

namespace fs = std::filesystem;

// Hidden, and without the ending of the file it becomes, so that a listing never takes a left-over
// for the real thing. Unique among processes and threads.
fs::path besideName(const fs::path& file) {
    static std::atomic<unsigned> counter = 0;
    return file.parent_path() / ("." + file.filename().string() + "." + std::to_string(getpid()) +
                                 "-" + std::to_string(counter++) + ".part");
}

bool writeAll(int descriptor, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

// The new name itself must survive a power cut too. Best effort: the content is already safe.
void syncFolder(const fs::path& folder) {
    const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

} // namespace

std::error_code tryReplaceFile(const fs::path& file, std::span<const std::byte> bytes,
                               OnDisk onDisk, Readers readers) {
    const fs::path beside = besideName(file);
    const int descriptor = open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                readers == Readers::owner ? 0600 : 0666);
    if (descriptor < 0) {
        return lastError();
    }
    std::error_code error;
    if (!writeAll(descriptor, bytes) || (onDisk == OnDisk::now && fsync(descriptor) != 0)) {
        error = lastError();
    }
    if (close(descriptor) != 0 && !error) {
        error = lastError();
    }
    if (!error && std::rename(beside.c_str(), file.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        unlink(beside.c_str());
        return error;
    }
    if (onDisk == OnDisk::now) {
        syncFolder(file.parent_path());
    }
    return {};
}

bool isBeside(const fs::path& file) {
    // As besideName makes it: .NAME.PROCESS-NUMBER.part
    const std::string name = file.filename().string();
    const std::string stem = file.stem().string();
    const std::size_t dot = stem.rfind('.');
    if (!name.starts_with('.') || file.extension() != ".part" || dot == std::string::npos ||
        dot == 0) {
        return false;
    }
    const std::string_view numbers = std::string_view(stem).substr(dot + 1);
    const std::size_t dash = numbers.find('-');
    const auto isNumber = [](std::string_view text) {
        return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
    };
    return dash != std::string_view::npos && isNumber(numbers.substr(0, dash)) &&
           isNumber(numbers.substr(dash + 1));
}

bool replaceFile(const fs::path& file, std::span<const std::byte> bytes) {
    return !tryReplaceFile(file, bytes);
}

} // namespace vornic
