// The one part of PackBytes.h that reads what others made: it is not in the program itself.

#include "VornicCore/foreign/PackBytes.h"
#include "VornicCore/foreign/PackTransfer.h"

#include <algorithm>
#include <utility>

namespace vornic {

namespace {

/// A folder that came as bytes.
class SentFiles final : public PackFiles {
  public:
    explicit SentFiles(SentFolder folder) : folder_(std::move(folder)) {
        for (const SentFile& file : folder_.files) {
            names_.push_back(file.name);
        }
    }

    std::string name() const override { return folder_.name; }
    const std::vector<std::string>& names() const override { return names_; }
    const PackNotes& notes() const override { return none_; }
    /// Nowhere: only what is in it has come.
    std::filesystem::path path(const std::string& /*name*/) const override { return {}; }
    std::string text(const std::string& name) const override {
        const auto found = std::ranges::lower_bound(folder_.files, name, {}, &SentFile::name);
        if (found == folder_.files.end() || found->name != name || !found->text) {
            throw ForeignPackError("\"" + plainLine(name) + "\" cannot be read.");
        }
        return *found->text;
    }

  private:
    SentFolder folder_;
    std::vector<std::string> names_;
    PackNotes none_;
};

} // namespace

std::string bytesOfPacksIn(std::string_view bytes) {
    auto folder = valueOf<SentFolder>(bytes);
    FindOptions options;
    if (folder.firstNote) {
        options.firstNote = static_cast<int>(std::clamp<std::int64_t>(*folder.firstNote, 0, 127));
    }
    std::vector<FoundPack> found = findPacks(SentFiles(std::move(folder)), options);
    return bytesOf(found);
}

} // namespace vornic
