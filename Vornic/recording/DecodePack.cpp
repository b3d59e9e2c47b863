#include "Vornic/recording/DecodePack.h"

#include "Vornic/recording/ReadRecording.h"
#include "VornicCore/base/ReadableText.h"
#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vornic {

namespace {

/// Decodes the files of a pack, as many at once as there are cores, each with one helper for all of
/// its files: to start a process takes longer than to decode a stroke.
class Decoding {
  public:
    Decoding(const PackFiles& files, std::vector<std::string> names, const PackReadOptions& options)
        : files_(files), names_(std::move(names)), options_(options) {}

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
        Decoder decoder(options_.decoder);
        for (std::size_t place = next_++; place < names_.size(); place = next_++) {
            if (options_.stop.stop_requested()) {
                return;
            }
            decode(names_[place], decoder);
            if (options_.progress) {
                const std::lock_guard guard(lock_);
                options_.progress(static_cast<double>(++done_) /
                                  static_cast<double>(names_.size()));
            }
        }
    }

    void decode(const std::string& name, Decoder& decoder) {
        const double left = PackLimits::mostSeconds - seconds_;
        ReadOptions options;
        options.stop = options_.stop;
        options.longestSeconds = std::max(left, 0.0);
        RecordingRead read;
        if (left > 0) {
            read = readRecording(files_.path(name), decoder, options);
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
    std::atomic<std::size_t> next_ = 0;
    std::atomic<double> seconds_ = 0;
    std::mutex lock_;
    std::size_t done_ = 0;              // guarded by lock_
    PackAudioFiles audio_;              // guarded by lock_
    std::vector<std::string> problems_; // guarded by lock_
};

} // namespace

PackAudioFiles decodePack(const ForeignPack& pack, const PackFiles& files,
                          const PackReadOptions& options, PackNotes& notes) {
    return Decoding(files, audioFilesOf(pack), options).run(notes);
}

} // namespace vornic
