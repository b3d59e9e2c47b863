#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackFiles.h"

#include <archive.h>
#include <archive_entry.h>
#include <stdlib.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

namespace fs = std::filesystem;

/// A fresh folder, readable for this user only, removed with everything in it.
class OwnFolder {
  public:
    OwnFolder() {
        std::error_code error;
        std::string name = (fs::temp_directory_path(error) / "vornic-pack-XXXXXX").string();
        if (error || ::mkdtemp(name.data()) == nullptr) {
            throw ForeignPackError("There is no room to unpack it.");
        }
        path_ = name;
    }
    ~OwnFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

struct CloseArchive {
    void operator()(archive* reader) const { archive_read_free(reader); }
};

/// An archive, unpacked. Its files are numbered on the disk: no name from it becomes a path.
class ArchiveFiles final : public PackFiles {
  public:
    explicit ArchiveFiles(const fs::path& file)
        : name_(file.stem().string()), packedBytes_(fs::file_size(file)) {
        const std::unique_ptr<archive, CloseArchive> reader(archive_read_new());
        if (!reader) {
            throw ForeignPackError("There is not enough memory.");
        }
        // What packs come in. The library knows many more, which nobody has asked for and whose
        // readers would be open to whoever sends a file.
        archive_read_support_format_zip(reader.get());
        archive_read_support_format_tar(reader.get());
        archive_read_support_filter_gzip(reader.get());
        archive_read_support_filter_bzip2(reader.get());
        archive_read_support_filter_xz(reader.get());
        archive_read_support_filter_zstd(reader.get());
        constexpr std::size_t block = 65536;
        if (archive_read_open_filename(reader.get(), file.c_str(), block) != ARCHIVE_OK) {
            throw ForeignPackError("It is no sound pack that Vornic knows.");
        }
        unpack(reader.get());
        for (const auto& [name, place] : files_) {
            names_.push_back(name);
        }
    }

    std::string name() const override { return name_; }
    const std::vector<std::string>& names() const override { return names_; }
    const PackNotes& notes() const override { return notes_; }
    fs::path path(const std::string& name) const override {
        const auto found = files_.find(name);
        return found == files_.end() ? fs::path() : found->second;
    }

    std::string text(const std::string& name) const override {
        std::error_code error;
        const fs::path file = path(name);
        const std::uintmax_t size = fs::file_size(file, error);
        if (error || size > PackLimits::largestText) {
            throw ForeignPackError("\"" + readable(name) + "\" is too large.");
        }
        std::ifstream stream(file, std::ios::binary);
        std::string text(size, '\0');
        if (!stream.read(text.data(), static_cast<std::streamsize>(size))) {
            throw ForeignPackError("\"" + readable(name) + "\" cannot be read.");
        }
        return text;
    }

  private:
    void unpack(archive* reader) {
        archive_entry* entry = nullptr;
        std::size_t seen = 0;
        for (;;) {
            const int state = archive_read_next_header(reader, &entry);
            if (state == ARCHIVE_EOF) {
                break;
            }
            if (state < ARCHIVE_WARN) {
                if (seen == 0) {
                    throw ForeignPackError("It is no sound pack that Vornic knows.");
                }
                addNote(notes_.missing, "The archive is damaged or cut short: what comes after its "
                                        "first " +
                                            std::to_string(seen) + " entries is lost.");
                break;
            }
            if (++seen > PackLimits::mostFiles) {
                throw ForeignPackError("The archive has more than " +
                                       std::to_string(PackLimits::mostFiles) + " entries.");
            }
            take(reader, entry);
        }
        if (seen == 0) {
            throw ForeignPackError("The archive is empty.");
        }
    }

    void take(archive* reader, archive_entry* entry) {
        const char* raw = archive_entry_pathname_utf8(entry);
        raw = raw != nullptr ? raw : archive_entry_pathname(entry);
        const std::string given = raw != nullptr ? raw : "";
        const std::string shown = "\"" + readable(given) + "\"";
        if (archive_entry_filetype(entry) == AE_IFDIR) {
            return;
        }
        if (archive_entry_filetype(entry) != AE_IFREG || archive_entry_hardlink(entry) != nullptr ||
            archive_entry_symlink(entry) != nullptr) {
            addNote(notes_.ignored, shown + " is a link or no ordinary file.");
            return;
        }
        const std::string name = plainName(given);
        if (name.empty()) {
            addNote(notes_.ignored, shown + " leads out of the archive or lies too deep.");
            return;
        }
        if (archive_entry_is_encrypted(entry) != 0) {
            addNote(notes_.missing, shown + " is locked with a password.");
            return;
        }
        if (files_.contains(name)) {
            addNote(notes_.ignored, shown + " is there twice.");
            return;
        }
        const fs::path place = folder_.path() / (std::to_string(files_.size()) + endingOf(name));
        if (write(reader, place)) {
            files_[name] = place;
        } else {
            std::error_code ignored;
            fs::remove(place, ignored);
            addNote(notes_.missing, shown + " is damaged.");
        }
    }

    /// The decoder looks at it for formats that have no mark of their own.
    static std::string endingOf(const std::string& name) {
        for (const char* const ending :
             {".wav", ".ogg", ".mp3", ".flac", ".m4a", ".aac", ".aiff", ".aif", ".opus", ".webm"}) {
            const std::string_view end(ending);
            if (name.size() > end.size() &&
                std::ranges::equal(std::string_view(name).substr(name.size() - end.size()), end, {},
                                   [](char letter) {
                                       return letter >= 'A' && letter <= 'Z'
                                                  ? static_cast<char>(letter - 'A' + 'a')
                                                  : letter;
                                   })) {
                return ending;
            }
        }
        return {};
    }

    bool write(archive* reader, const fs::path& place) {
        std::ofstream file(place, std::ios::binary);
        std::array<char, 65536> piece{};
        for (;;) {
            const la_ssize_t got = archive_read_data(reader, piece.data(), piece.size());
            if (got < 0) {
                return false;
            }
            if (got == 0) {
                break;
            }
            bytes_ += static_cast<std::uint64_t>(got);
            if (bytes_ > PackLimits::mostBytes ||
                (bytes_ > PackLimits::freeBytes &&
                 bytes_ / std::max<std::uint64_t>(packedBytes_, 1) > PackLimits::mostRatio)) {
                throw ForeignPackError("The archive grows far beyond what a sound pack needs.");
            }
            if (!file.write(piece.data(), got)) {
                throw ForeignPackError("There is no room to unpack it.");
            }
        }
        file.close();
        if (!file) {
            throw ForeignPackError("There is no room to unpack it.");
        }
        return true;
    }

    std::string name_;
    OwnFolder folder_;
    std::map<std::string, fs::path> files_;
    std::vector<std::string> names_;
    PackNotes notes_;
    std::uint64_t packedBytes_;
    std::uint64_t bytes_ = 0;
};

} // namespace

std::unique_ptr<PackFiles> openArchive(const fs::path& file) {
    return std::make_unique<ArchiveFiles>(file);
}

} // namespace vornic
