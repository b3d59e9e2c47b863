#include "Vornic/recording/ReadPacks.h"

#include "Vornic/recording/ReadRecording.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/base/SampleRate.h"
#include "VornicCore/foreign/PackFolder.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <fstream>
#include <memory>
#include <mutex>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace vornic {

namespace {

namespace fs = std::filesystem;

/// Decodes the files of a pack, several at once: each is a process of its own, which waits more
/// than it computes.
class Decoding {
  public:
    Decoding(const PackFiles& files, std::vector<std::string> names, const PackReadOptions& options,
             std::function<void(double)> progress)
        : files_(files), names_(std::move(names)), options_(options),
          progress_(std::move(progress)) {}

    PackAudioFiles run(PackNotes& notes) {
        const std::size_t threads =
            std::clamp<std::size_t>(std::thread::hardware_concurrency(), 2, 8);
        {
            std::vector<std::jthread> helpers;
            for (std::size_t helper = 1; helper < std::min(threads, names_.size()); ++helper) {
                helpers.emplace_back([this] { work(); });
            }
            work();
        }
        for (const std::string& problem : problems_) {
            addNote(notes.missing, problem);
        }
        return std::move(audio_);
    }

  private:
    void work() {
        for (std::size_t place = next_++; place < names_.size(); place = next_++) {
            if (options_.stop.stop_requested()) {
                return;
            }
            decode(names_[place]);
            if (progress_) {
                const std::lock_guard guard(lock_);
                progress_(static_cast<double>(++done_) / static_cast<double>(names_.size()));
            }
        }
    }

    void decode(const std::string& name) {
        const double left = PackLimits::mostSeconds - seconds_;
        ReadOptions options;
        options.decoder = options_.decoder;
        options.stop = options_.stop;
        options.longestSeconds = std::max(left, 0.0);
        RecordingRead read;
        if (left > 0) {
            read = readRecording(files_.path(name), options);
        } else {
            read.remark = "The pack has more than " +
                          std::to_string(static_cast<int>(PackLimits::mostSeconds / 60)) +
                          " minutes of sound.";
        }
        const std::lock_guard guard(lock_);
        if (!read.samples || !read.remark.empty()) {
            problems_.push_back("\"" + readable(name) + "\": " + read.remark);
        }
        if (read.samples) {
            seconds_ = seconds_ + static_cast<double>(read.samples->size()) / DSP::sampleRate;
            audio_[name] = {.rate = read.rate, .samples = *std::move(read.samples)};
        }
    }

    const PackFiles& files_;
    const std::vector<std::string> names_;
    const PackReadOptions& options_;
    const std::function<void(double)> progress_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<double> seconds_ = 0;
    std::mutex lock_;
    std::size_t done_ = 0;              // guarded by lock_
    PackAudioFiles audio_;              // guarded by lock_
    std::vector<std::string> problems_; // guarded by lock_
};

/// A folder or archive, and what of it is wanted.
struct Opened {
    std::unique_ptr<PackFiles> files;
    /// How it is called in what the user named; empty: it is that.
    std::string within;
    /// Only the pack that this file describes; empty: all.
    std::string description;
    std::string error;
};

/// A description of a pack stands for the folder that it lies in.
bool isDescription(const fs::path& file) {
    const std::string ending = lowerCase(file.extension().string());
    return ending == ".json" || ending == ".txt" || ending == ".yaml" || ending == ".yml" ||
           ending == ".sfz" || ending == ".toml" || ending == ".dspreset";
}

bool looksLikeArchive(const std::string& name) {
    const std::string lower = lowerCase(name);
    return std::ranges::any_of(
        std::to_array<std::string_view>({".zip", ".dslibrary", ".tar", ".tgz", ".tar.gz", ".tbz2",
                                         ".tar.bz2", ".txz", ".tar.xz", ".tar.zst"}),
        [&](std::string_view ending) { return lower.ends_with(ending); });
}

std::vector<Opened> opened(const fs::path& path) {
    std::vector<Opened> all;
    std::error_code error;
    if (fs::is_regular_file(path, error) && isDescription(path)) {
        const fs::path folder = fs::absolute(path).parent_path();
        all.push_back({openPackFiles(folder), {}, path.filename().string(), {}});
        return all;
    }
    all.push_back({openPackFiles(path), {}, {}, {}});
    if (!fs::is_directory(path, error)) {
        return all;
    }
    for (const std::string& name : std::vector(all[0].files->names())) {
        if (looksLikeArchive(name) && all.size() <= PackLimits::mostPacks) {
            Opened archive{nullptr, name, {}, {}};
            try {
                archive.files = openArchive(all[0].files->path(name));
            } catch (const ForeignPackError& problem) {
                archive.error = problem.what();
            }
            all.push_back(std::move(archive));
        }
    }
    return all;
}

std::string joined(const std::string& within, const std::string& place) {
    return within.empty() || place.empty() ? within + place : within + "/" + place;
}

PackRead converted(const Opened& from, FoundPack found, const PackReadOptions& options,
                   const std::function<void(double)>& progress) {
    PackRead read{joined(from.within, found.place), std::nullopt, found.error};
    if (!found.pack) {
        return read;
    }
    ForeignPack& pack = *found.pack;
    pack.place = joined(from.within, pack.place);
    try {
        Decoding decoding(*from.files, audioFilesOf(pack), options, progress);
        const PackAudioFiles audio = decoding.run(pack.notes);
        if (options.stop.stop_requested()) {
            read.error = "The import was cancelled.";
        } else {
            read.pack = convertPack(pack, audio);
        }
    } catch (const ForeignPackError& error) {
        read.error = error.what();
    }
    return read;
}

} // namespace

bool isBoardFile(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        return !std::filesystem::is_directory(file, error);
    }
    if (file.extension() == ".vornic") {
        return true;
    }
    // Its members are sorted, so these come first.
    std::array<char, 64> head{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(head.data(), head.size());
    std::string text(head.data(), static_cast<std::size_t>(stream.gcount()));
    std::erase_if(text, [](char letter) {
        return letter == ' ' || letter == '\n' || letter == '\r' || letter == '\t';
    });
    return text.starts_with("{\"board\":") || text.starts_with("{\"format\":");
}

void readPacks(const fs::path& path, const PackReadOptions& options,
               const std::function<void(PackRead)>& take) {
    std::vector<Opened> all = opened(path);
    bool any = false;
    const auto give = [&](PackRead read) {
        any = true;
        take(std::move(read));
    };
    for (std::size_t place = 0; place < all.size(); ++place) {
        Opened& from = all[place];
        if (!from.files) {
            give({from.within, std::nullopt, from.error});
            continue;
        }
        std::vector<FoundPack> found = findPacks(*from.files, options.find);
        std::erase_if(found, [&](const FoundPack& each) {
            return !from.description.empty() && each.place != from.description;
        });
        const double share =
            1.0 / static_cast<double>(all.size() * std::max<std::size_t>(found.size(), 1));
        double before = static_cast<double>(place) / static_cast<double>(all.size());
        for (FoundPack& each : found) {
            if (options.stop.stop_requested()) {
                return;
            }
            give(converted(from, std::move(each), options, [&](double part) {
                if (options.progress) {
                    options.progress(before + part * share);
                }
            }));
            before += share;
        }
        from.files.reset(); // An archive's files leave the disk.
    }
    if (!any) {
        throw ForeignPackError("It is no sound pack that Vornic knows.");
    }
}

} // namespace vornic
