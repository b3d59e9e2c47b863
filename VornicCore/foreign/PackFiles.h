#pragma once

#include "VornicCore/base/ReadFile.h"
#include "VornicCore/foreign/ForeignPack.h"
#include "VornicCore/foreign/ReadArchive.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// The files of a folder or of an archive, and nothing else: no name leads out of it. Thread: any,
/// one at a time.
class PackFiles {
  public:
    PackFiles() = default;
    PackFiles(const PackFiles&) = delete;
    PackFiles& operator=(const PackFiles&) = delete;
    virtual ~PackFiles() = default;

    /// What the folder or archive is called.
    [[nodiscard]] virtual std::string name() const = 0;

    /// Every file, sorted, as "folder/file.wav".
    [[nodiscard]] virtual const std::vector<std::string>& names() const = 0;

    /// The content of one of `names`, at most PackLimits::largestText. Throws ForeignPackError.
    [[nodiscard]] virtual std::string text(const std::string& name) const = 0;

    /// Where one of `names` lies on the disk for as long as this lives.
    [[nodiscard]] virtual std::filesystem::path path(const std::string& name) const = 0;

    /// What was left out of `names`.
    [[nodiscard]] virtual const PackNotes& notes() const = 0;
};

/// Tells of everything in an archive: `readArchive`, in this process or in another. Throws
/// ForeignPackError.
using ArchiveReader = std::function<void(const FileToRead& file, ArchiveSink& sink)>;

/// Opens a folder, or an archive (zip, or tar as it is or compressed), whatever it is called; an
/// archive is unpacked into a folder of its own, which goes with the result. Throws
/// ForeignPackError for what is neither, cannot be read or is beyond PackLimits.
std::unique_ptr<PackFiles> openPackFiles(const std::filesystem::path& path,
                                         const ArchiveReader& read);

/// The same for a file that is known to be no folder.
std::unique_ptr<PackFiles> openArchive(const std::filesystem::path& file,
                                       const ArchiveReader& read);

/// The text of a file of a pack, at most PackLimits::largestText; `name` is what it is called.
/// Throws ForeignPackError.
std::string packText(const std::filesystem::path& file, const std::string& name);

/// A name as it may stand in an archive, made plain: "./a\b.wav" is "a/b.wav". Empty for one that
/// leads elsewhere ("..", an absolute path, a drive), for an overlong one and for one with more
/// than PackLimits::deepest folders.
std::string plainName(std::string_view name);

} // namespace vornic
