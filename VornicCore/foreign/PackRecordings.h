#pragma once

#include "VornicCore/foreign/ForeignPack.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vornic {

/// One of a pack's audio files, decoded.
struct PackAudio {
    /// Of the file, in Hz.
    double rate = 0;
    /// 48 kHz mono; empty: it could not be read.
    std::vector<float> samples;
};

/// By the file's name in the pack.
using PackAudioFiles = std::map<std::string, PackAudio>;

/// The audio files that a pack uses, sorted.
std::vector<std::string> audioFilesOf(const ForeignPack& pack);

/// The recordings of a pack, cut out of its files, equal ones once. Thread: any, one at a time.
class PackRecordings {
  public:
    struct Recording {
        std::vector<float> samples; // 48 kHz mono
        /// How many dB the renderer, which makes all strokes equally strong, raises it.
        double raisedDb = 0;
    };

    PackRecordings(const PackAudioFiles& audio, PackNotes& notes) : audio_(audio), notes_(notes) {}

    /// The index of a take's recording. None where nothing is left of it, which is noted, as is
    /// whatever had to be cut; `key` names it in the notes.
    std::optional<std::size_t> add(const ForeignTake& take, const std::string& key);

    const std::vector<Recording>& all() const { return recordings_; }
    std::vector<Recording> takeAll() { return std::move(recordings_); }

  private:
    struct Cut {
        std::size_t begin;
        std::size_t end;
    };

    std::optional<Cut> cutOf(const ForeignTake& take, const PackAudio& audio,
                             const std::string& key);
    std::size_t store(std::vector<float> samples);

    const PackAudioFiles& audio_;
    PackNotes& notes_;
    std::vector<Recording> recordings_;
    /// By file, begin and end; the index of the recording, none for one without sound.
    std::map<std::pair<std::string, std::pair<std::size_t, std::size_t>>,
             std::optional<std::size_t>>
        known_;
    /// Indices by a hash of the samples.
    std::unordered_multimap<std::size_t, std::size_t> equal_;
};

} // namespace vornic
