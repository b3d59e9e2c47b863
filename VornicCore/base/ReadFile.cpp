#include "VornicCore/base/ReadFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <utility>

namespace vornic {

namespace {

[[noreturn]] void complain(const std::filesystem::path& file, int number) {
    const std::error_code code(number, std::generic_category());
    throw ReadError(file, code.message(), code);
}

const char* refusalOf(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        return "it is a folder";
    }
    return S_ISREG(status.st_mode) ? nullptr : "it is no regular file";
}

} // namespace

FileToRead::FileToRead(std::filesystem::path file, std::uintmax_t largest)
    : file_(std::move(file)), largest_(largest) {
    struct stat status{};
    // Looked at first, because opening alone wakes some devices, and what was opened again, because
    // it may be another file by then.
    if (::stat(file_.c_str(), &status) != 0) {
        complain(file_, errno);
    }
    if (const char* const refusal = refusalOf(status)) {
        throw ReadError(file_, refusal);
    }
    descriptor_ = ::open(file_.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor_ < 0) {
        complain(file_, errno);
    }
    const int error = ::fstat(descriptor_, &status) == 0 ? 0 : errno;
    const char* const refusal = error == 0 ? refusalOf(status) : nullptr;
    if (error != 0 || refusal != nullptr) {
        ::close(descriptor_);
        if (refusal != nullptr) {
            throw ReadError(file_, refusal);
        }
        complain(file_, error);
    }
    size_ = static_cast<std::uintmax_t>(status.st_size);
    if (size_ > largest_) {
        ::close(descriptor_);
        throw ReadError(file_, "it is larger than " + std::to_string(largest_) + " bytes");
    }
}

FileToRead::~FileToRead() {
    ::close(descriptor_);
}

std::string FileToRead::text() const {
    // Piece by piece: the size of some files, and of one that is being written, says nothing.
    std::string text;
    text.reserve(static_cast<std::size_t>(size_));
    std::array<char, 65536> piece{};
    for (;;) {
        const ssize_t count =
            ::pread(descriptor_, piece.data(), piece.size(), static_cast<off_t>(text.size()));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            complain(file_, errno);
        }
        if (count == 0) {
            return text;
        }
        text.append(piece.data(), static_cast<std::size_t>(count));
        if (text.size() > largest_) {
            throw ReadError(file_, "it is larger than " + std::to_string(largest_) + " bytes");
        }
    }
}

std::string readTextFile(const std::filesystem::path& file, std::uintmax_t largest) {
    return FileToRead(file, largest).text();
}

} // namespace vornic
