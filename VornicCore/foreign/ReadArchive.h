#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace vornic {

/// What is told of an archive, one entry after the other. Thread: any, as everything here.
class ArchiveSink {
  public:
    enum class Entry : std::uint32_t {
        /// Its content follows, and then `endFile`.
        file,
        /// A link, a device or the like.
        special,
        /// Locked with a password.
        locked
    };

    ArchiveSink() = default;
    ArchiveSink(const ArchiveSink&) = delete;
    ArchiveSink& operator=(const ArchiveSink&) = delete;
    virtual ~ArchiveSink() = default;

    /// `name` is as it stands in the archive. Throws ForeignPackError to end the reading.
    virtual void entry(Entry kind, const std::string& name) = 0;
    virtual void content(std::span<const std::byte> bytes) = 0;
    virtual void endFile(bool whole) = 0;
    /// What follows the last entry cannot be read.
    virtual void cutShort() = 0;
};

/// Reads an archive (zip, or tar as it is or compressed) that is open for reading, from its
/// beginning. Throws ForeignPackError for anything else.
void readArchive(int descriptor, ArchiveSink& sink);

} // namespace vornic
