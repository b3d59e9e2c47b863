#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vornic {

/// A file could not be read, as a sentence that names it. Thread: any.
class ReadError : public std::runtime_error {
  public:
    ReadError(const std::filesystem::path& file, const std::string& why, std::error_code code = {})
        : std::runtime_error("Couldn't read " + file.string() + ": " + why), code_(code) {}

    /// What the system said; none where the file is of the wrong kind or too large, which another
    /// try will not change.
    const std::error_code& code() const { return code_; }

  private:
    std::error_code code_;
};

/// A file that is open for reading, the one way to open one: a regular file, of a size that the
/// reader can bear, opened without waiting. A pipe in its place would keep its reader waiting for a
/// writer that never comes, and a device might never end. Thread: any.
class FileToRead {
  public:
    /// Follows links. `largest` is in bytes. Throws ReadError.
    FileToRead(std::filesystem::path file, std::uintmax_t largest);
    ~FileToRead();
    FileToRead(const FileToRead&) = delete;
    FileToRead& operator=(const FileToRead&) = delete;

    /// What libraries read from; closed with this object.
    int descriptor() const { return descriptor_; }

    /// In bytes, as it was opened.
    std::uintmax_t size() const { return size_; }

    /// Everything from the beginning. Throws ReadError, also for a file that grows beyond `largest`
    /// meanwhile.
    std::string text() const;

  private:
    std::filesystem::path file_;
    std::uintmax_t largest_;
    int descriptor_ = -1;
    std::uintmax_t size_ = 0;
};

/// The bytes of a regular file of at most `largest` bytes. Throws ReadError. Thread: any.
std::string readTextFile(const std::filesystem::path& file, std::uintmax_t largest);

} // namespace vornic
