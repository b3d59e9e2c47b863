#include "VornicCore/foreign/PackFiles.h"

#include "VornicCore/base/ReadableText.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

namespace fs = std::filesystem;

/// A folder on the disk. Links are left out: they lead elsewhere.
class FolderFiles final : public PackFiles {
  public:
    explicit FolderFiles(fs::path folder) : folder_(std::move(folder)) {
        std::error_code error;
        fs::recursive_directory_iterator entry(folder_, error);
        for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
            add(entry);
            if (names_.size() > PackLimits::mostFiles) {
                throw ForeignPackError("The folder has more than " +
                                       std::to_string(PackLimits::mostFiles) + " files.");
            }
        }
        if (error) {
            throw ForeignPackError("Couldn't read the folder: " + error.message() + ".");
        }
        std::ranges::sort(names_);
    }

    std::string name() const override {
        const fs::path plain = fs::absolute(folder_).lexically_normal();
        return (plain.has_filename() ? plain : plain.parent_path()).filename().string();
    }
    const std::vector<std::string>& names() const override { return names_; }
    const PackNotes& notes() const override { return notes_; }
    fs::path path(const std::string& name) const override { return folder_ / name; }

    std::string text(const std::string& name) const override { return packText(path(name), name); }

  private:
    void add(fs::recursive_directory_iterator& entry) {
        std::error_code error;
        const fs::file_status status = entry->symlink_status(error);
        const std::string name = entry->path().lexically_relative(folder_).generic_string();
        if (fs::is_symlink(status)) {
            addNote(notes_.ignored, "\"" + name + "\" is a link and was not followed.");
        } else if (fs::is_directory(status)) {
            if (static_cast<std::size_t>(entry.depth()) + 1 > PackLimits::deepest) {
                entry.disable_recursion_pending();
                addNote(notes_.ignored, "\"" + name + "\" lies too deep.");
            }
        } else if (fs::is_regular_file(status)) {
            names_.push_back(name);
        } else {
            addNote(notes_.ignored, "\"" + name + "\" is no ordinary file.");
        }
    }

    fs::path folder_;
    std::vector<std::string> names_;
    PackNotes notes_;
};

} // namespace

std::unique_ptr<PackFiles> openPackFiles(const fs::path& path, const ArchiveReader& read) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) {
        return std::make_unique<FolderFiles>(path);
    }
    if (!fs::is_regular_file(status)) {
        throw ForeignPackError(fs::exists(status) ? "It is neither a file nor a folder."
                                                  : "There is no such file.");
    }
    return openArchive(path, read);
}

std::string packText(const fs::path& file, const std::string& name) {
    try {
        return readTextFile(file, PackLimits::largestText);
    } catch (const ReadError& error) {
        throw ForeignPackError("\"" + readable(name) +
                               (error.code() ? "\" cannot be read." : "\" is too large."));
    }
}

std::string plainName(std::string_view name) {
    const bool isDrive = name.size() > 1 && name[1] == ':';
    if (name.empty() || name.size() > PackLimits::longestName || name[0] == '/' ||
        name[0] == '\\' || isDrive || name.find('\0') != std::string_view::npos) {
        return {};
    }
    std::string result;
    std::size_t depth = 0;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of("/\\"), name.size());
        const std::string_view part = name.substr(0, end);
        name.remove_prefix(std::min(end + 1, name.size()));
        if (part == ".." || depth > PackLimits::deepest) {
            return {};
        }
        if (!part.empty() && part != ".") {
            result += (result.empty() ? "" : "/") + std::string(part);
            ++depth;
        }
    }
    return result;
}

} // namespace vornic
