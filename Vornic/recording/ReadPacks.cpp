#include "Vornic/recording/ReadPacks.h"

#include "VornicCore/base/ReadFile.h"
#include "VornicCore/foreign/PackFolder.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

namespace fs = std::filesystem;

bool endsWithOneOf(std::string_view name, std::span<const std::string_view> endings) {
    const std::string lower = lowerCase(name);
    return std::ranges::any_of(endings,
                               [&](std::string_view ending) { return lower.ends_with(ending); });
}

/// A description of a pack stands for the folder that it lies in.
bool isDescription(const fs::path& file) {
    constexpr std::array<std::string_view, 7> endings{".json", ".txt",  ".yaml",    ".yml",
                                                      ".sfz",  ".toml", ".dspreset"};
    return endsWithOneOf(file.filename().string(), endings);
}

bool looksLikeArchive(const std::string& name) {
    constexpr std::array<std::string_view, 10> endings{".zip",    ".dslibrary", ".tar",     ".tgz",
                                                       ".tar.gz", ".tbz2",      ".tar.bz2", ".txz",
                                                       ".tar.xz", ".tar.zst"};
    return endsWithOneOf(name, endings);
}

/// The beginning of a regular file; empty for anything else.
std::string beginningOf(const fs::path& file) {
    try {
        const FileToRead reader(file, std::numeric_limits<std::uintmax_t>::max());
        std::string head(512, '\0');
        const ssize_t got = ::pread(reader.descriptor(), head.data(), head.size(), 0);
        head.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        return head;
    } catch (const ReadError&) {
        return {};
    }
}

std::string joined(const std::string& within, const std::string& place) {
    return within.empty() || place.empty() ? within + place : within + "/" + place;
}

constexpr const char* noPack = "It is no sound pack that Vornic knows.";
constexpr const char* cancelled = "The import was cancelled.";

} // namespace

bool isBoardFile(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        return !fs::is_directory(file, error);
    }
    if (file.extension() == ".vornic") {
        return true;
    }
    // Its members are sorted, so these come first.
    std::string text = beginningOf(file).substr(0, 64);
    std::erase_if(text, [](char letter) {
        return letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t';
    });
    return text.starts_with("{\"board\":") || text.starts_with("{\"format\":");
}

bool mayHoldPacks(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error)) {
        return true;
    }
    if (!fs::is_regular_file(path, error)) {
        return false;
    }
    if (looksLikeArchive(path.filename().string()) || isDescription(path)) {
        return true;
    }
    const std::string head = beginningOf(path);
    constexpr std::array<std::string_view, 5> marks{"PK\x03\x04", "\x1F\x8B", "BZh",
                                                    "\xFD"
                                                    "7zXZ",
                                                    "\x28\xB5\x2F\xFD"};
    constexpr std::size_t tarMark = 257;
    return std::ranges::any_of(marks,
                               [&](std::string_view mark) { return head.starts_with(mark); }) ||
           head.find("ustar", tarMark) == tarMark;
}

FoundPacks::FoundPacks(const std::vector<fs::path>& paths, const PackReadOptions& options) {
    const bool several = paths.size() > 1;
    for (const fs::path& path : paths) {
        const std::string called = several ? path.filename().string() : std::string();
        std::error_code error;
        if (fs::is_regular_file(path, error) && isDescription(path)) {
            sources_.push_back(
                {fs::absolute(path).parent_path(), called, path.filename().string()});
        } else {
            sources_.push_back({path, called, {}});
        }
    }
    PackHelper helper(options.decoder, options.stop);
    // A folder brings further ones, which come behind.
    for (std::size_t source = 0; source < sources_.size(); ++source) {
        if (options.stop.stop_requested()) {
            throw ForeignPackError(cancelled);
        }
        look(source, options, helper);
        if (options.progress) {
            options.progress(static_cast<double>(source + 1) /
                             static_cast<double>(sources_.size()));
        }
    }
    if (entries_.empty()) {
        throw ForeignPackError(noPack);
    }
    if (entries_.size() == 1 && !packs_[0] && sources_.size() == 1) {
        throw ForeignPackError(entries_[0].error);
    }
}

FoundPacks::~FoundPacks() = default;

const PackFiles& FoundPacks::filesOf(std::size_t source, PackHelper& helper) {
    if (!files_ || open_ != source) {
        files_.reset();
        files_ =
            openPackFiles(sources_[source].path, [&](const FileToRead& file, ArchiveSink& sink) {
                helper.readArchive(file, sink);
            });
        open_ = source;
    }
    return *files_;
}

void FoundPacks::look(std::size_t source, const PackReadOptions& options, PackHelper& helper) {
    const std::string within = sources_[source].within;
    const auto add = [&](Entry entry, std::optional<ForeignPack> pack) {
        if (entries_.size() < PackLimits::mostPacks) {
            entries_.push_back(std::move(entry));
            packs_.push_back(std::move(pack));
            sourceOf_.push_back(source);
        }
    };
    std::vector<FoundPack> found;
    try {
        const PackFiles& files = filesOf(source, helper);
        found = helper.findPacks(files, options.find);
        const fs::path& path = sources_[source].path;
        std::error_code error;
        if (sources_[source].description.empty() && fs::is_directory(path, error)) {
            for (const std::string& name : files.names()) {
                if (looksLikeArchive(name) && sources_.size() <= PackLimits::mostPacks) {
                    sources_.push_back({files.path(name), joined(within, name), {}});
                }
            }
        }
    } catch (const ForeignPackError& error) {
        add({within, {}, std::nullopt, error.what()}, std::nullopt);
        return;
    }
    for (FoundPack& each : found) {
        const std::string& wanted = sources_[source].description;
        if (!wanted.empty() && each.place != wanted) {
            continue;
        }
        Entry entry{joined(within, each.place), {}, std::nullopt, each.error};
        if (each.pack) {
            each.pack->place = joined(within, each.pack->place);
            entry.name = plainLine(each.pack->name);
            entry.format = each.pack->format;
        }
        add(std::move(entry), std::move(each.pack));
    }
}

PackRead FoundPacks::read(std::size_t entry, const PackReadOptions& options) {
    const std::lock_guard guard(reading_);
    if (!packs_.at(entry)) {
        return {std::nullopt, entries_[entry].error};
    }
    try {
        ForeignPack pack = *packs_[entry];
        PackHelper helper(options.decoder, options.stop);
        const PackFiles& files = filesOf(sourceOf_[entry], helper);
        const PackAudioFiles audio = decodePack(pack, files, options, pack.notes);
        if (options.stop.stop_requested()) {
            return {std::nullopt, cancelled};
        }
        return {convertPack(pack, audio), {}};
    } catch (const ForeignPackError& error) {
        return {std::nullopt, error.what()};
    }
}

} // namespace vornic
