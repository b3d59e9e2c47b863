#include "VornicCore/base/ReadFile.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackFiles.h"
#include "VornicCore/foreign/ReadArchive.h"

#include <stdlib.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <map>
#include <span>
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

/// An archive, unpacked. Its files are numbered on the disk: no name from it becomes a path.
class ArchiveFiles final : public PackFiles, private ArchiveSink {
  public:
    ArchiveFiles(const fs::path& file, const ArchiveReader& read) : name_(file.stem().string()) {
        try {
            const FileToRead opened(file, largestArchive);
            packedBytes_ = opened.size();
            read(opened, *this);
        } catch (const ReadError& error) {
            throw ForeignPackError(error.what());
        }
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
    std::string text(const std::string& name) const override { return packText(path(name), name); }

  private:
    static constexpr std::uintmax_t largestArchive = std::uintmax_t{4} << 30U;

    void entry(Entry kind, const std::string& given) override {
        const std::string shown = "\"" + readable(given) + "\"";
        current_.clear();
        if (++seen_ > PackLimits::mostFiles) {
            throw ForeignPackError("The archive has more than " +
                                   std::to_string(PackLimits::mostFiles) + " entries.");
        }
        if (kind != Entry::file) {
            if (kind == Entry::locked) {
                addNote(notes_.missing, shown + " is locked with a password.");
            } else {
                addNote(notes_.ignored, shown + " is a link or no ordinary file.");
            }
            return;
        }
        const std::string name = plainName(given);
        if (name.empty()) {
            addNote(notes_.ignored, shown + " leads out of the archive or lies too deep.");
            return;
        }
        if (files_.contains(name)) {
            addNote(notes_.ignored, shown + " is there twice.");
            return;
        }
        current_ = name;
        place_ = folder_.path() / (std::to_string(files_.size()) + endingOf(name));
        stream_.open(place_, std::ios::binary | std::ios::trunc);
    }

    void content(std::span<const std::byte> bytes) override {
        bytes_ += bytes.size();
        if (bytes_ > PackLimits::mostBytes ||
            (bytes_ > PackLimits::freeBytes &&
             bytes_ / std::max<std::uint64_t>(packedBytes_, 1) > PackLimits::mostRatio)) {
            throw ForeignPackError("The archive grows far beyond what a sound pack needs.");
        }
        if (!current_.empty()) {
            stream_.write(reinterpret_cast<const char*>(bytes.data()),
                          static_cast<std::streamsize>(bytes.size()));
        }
    }

    void endFile(bool whole) override {
        if (current_.empty()) {
            return;
        }
        stream_.close();
        if (!stream_) {
            throw ForeignPackError("There is no room to unpack it.");
        }
        if (whole) {
            files_[current_] = place_;
        } else {
            std::error_code ignored;
            fs::remove(place_, ignored);
            addNote(notes_.missing, "\"" + readable(current_) + "\" is damaged.");
        }
        current_.clear();
    }

    void cutShort() override {
        addNote(notes_.missing, "The archive is damaged or cut short: what comes after its first " +
                                    std::to_string(seen_) + " files is lost.");
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

    std::string name_;
    OwnFolder folder_;
    std::map<std::string, fs::path> files_;
    std::vector<std::string> names_;
    PackNotes notes_;
    std::uint64_t packedBytes_ = 0;
    std::uint64_t bytes_ = 0;
    std::size_t seen_ = 0;
    /// What is being written; its name is empty for what is left out.
    std::string current_;
    fs::path place_;
    std::ofstream stream_;
};

} // namespace

std::unique_ptr<PackFiles> openArchive(const fs::path& file, const ArchiveReader& read) {
    return std::make_unique<ArchiveFiles>(file, read);
}

} // namespace vornic
