#pragma once

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/foreign/ConvertPack.h"
#include "VornicCore/foreign/FindPacks.h"
#include "tests/support/ScratchFolder.h"

#include <archive.h>
#include <archive_entry.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// A stroke that begins and ends at rest, of its own pitch: 50 ms and as much silence.
inline std::vector<float> testStroke(double hertz, float level = 0.5F) {
    std::vector<float> samples(4800);
    for (std::size_t at = 96; at < 2400; ++at) {
        const auto time = static_cast<double>(at - 96);
        samples[at] =
            level * static_cast<float>(std::exp(-time / 400) *
                                       std::sin(2 * std::numbers::pi * hertz * time / 48000));
    }
    return samples;
}

inline void writeStroke(const ScratchFolder& folder, const std::string& name, double hertz,
                        float level = 0.5F) {
    folder.write(name, ""); // makes the folders
    writeFloatWAV(testStroke(hertz, level), folder / name);
}

/// Opens a file or folder as the program does, except that this process reads archives.
inline std::unique_ptr<PackFiles> opened(const std::filesystem::path& path) {
    return openPackFiles(path, [](const FileToRead& file, ArchiveSink& sink) {
        readArchive(file.descriptor(), sink);
    });
}

/// What a file or folder holds, as the program reads it, except that this process decodes.
inline std::vector<FoundPack> packsIn(const std::filesystem::path& path,
                                      const FindOptions& options = {}) {
    return findPacks(*opened(path), options);
}

inline ConvertedPack convertedFrom(const PackFiles& files, const FoundPack& found) {
    PackAudioFiles audio;
    for (const std::string& name : audioFilesOf(*found.pack)) {
        if (std::optional<std::vector<float>> samples = loadAudio(files.path(name))) {
            audio[name] = {.rate = 48000, .samples = *std::move(samples)};
        }
    }
    return convertPack(*found.pack, audio);
}

/// The one pack in a file or folder, converted.
inline ConvertedPack onlyPack(const std::filesystem::path& path, const FindOptions& options = {}) {
    const auto files = opened(path);
    const std::vector<FoundPack> found = findPacks(*files, options);
    if (found.size() != 1 || !found[0].pack) {
        throw ForeignPackError("not one pack but " + std::to_string(found.size()) + " " +
                               (found.empty() ? "" : found[0].error));
    }
    return convertedFrom(*files, found[0]);
}

/// The recordings that a key plays, and its release's.
inline std::vector<std::vector<float>> recordingsOf(const ConvertedPack& pack, std::int64_t key,
                                                    bool release = false) {
    const auto resolved = pack.contents.board.resolve(key);
    std::vector<std::vector<float>> recordings;
    if (!resolved || (release && !resolved->sound->release)) {
        return recordings;
    }
    const StrokeSpec& stroke = release ? *resolved->sound->release : resolved->sound->press;
    for (const LayerSpec& layer : stroke.layers) {
        for (const std::string& id : layer.samples) {
            recordings.push_back(pack.contents.samples.at(id));
        }
    }
    return recordings;
}

/// An entry of an archive: its name, what is in it, and where it leads if it is a link.
struct ArchiveItem {
    std::string name;
    std::string content;
    std::string link = {};
};

enum class ArchiveKind { zip, tarGz };

inline void writeArchive(const std::filesystem::path& file, ArchiveKind kind,
                         const std::vector<ArchiveItem>& items) {
    archive* const writer = archive_write_new();
    if (kind == ArchiveKind::zip) {
        archive_write_set_format_zip(writer);
    } else {
        archive_write_add_filter_gzip(writer);
        archive_write_set_format_pax_restricted(writer);
    }
    archive_write_open_filename(writer, file.c_str());
    for (const ArchiveItem& item : items) {
        archive_entry* const entry = archive_entry_new();
        archive_entry_set_pathname(entry, item.name.c_str());
        archive_entry_set_filetype(entry, item.link.empty() ? AE_IFREG : AE_IFLNK);
        archive_entry_set_perm(entry, 0644);
        if (!item.link.empty()) {
            archive_entry_set_symlink(entry, item.link.c_str());
        }
        archive_entry_set_size(entry, static_cast<la_int64_t>(item.content.size()));
        archive_write_header(writer, entry);
        archive_write_data(writer, item.content.data(), item.content.size());
        archive_entry_free(entry);
    }
    archive_write_free(writer);
}

} // namespace vornic
