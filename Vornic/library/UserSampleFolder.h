#pragma once

#include "Vornic/library/SampleInfo.h"

#include <filesystem>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace vornic {

/// The user's samples on disk: a WAV file (48 kHz, mono, 16 bits) for each and "index.json", which
/// says what they are. Whenever the program dies, the index is whole and the files that it names
/// are there. Other programs may use the folder at the same time. The files are the user's alone.
/// Thread: any.
class UserSampleFolder {
  public:
    /// An empty path stands for no folder: it holds nothing, and writing to it fails.
    explicit UserSampleFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// Where the sample `id` is kept: every "/" of the id becomes "_".
    [[nodiscard]] std::filesystem::path fileOf(const std::string& id) const;

    /// What the index lists; nothing where it is missing, malformed or cannot be read.
    [[nodiscard]] std::vector<SampleInfo> listed() const;

    /// A sample that is to be kept.
    struct Kept {
        SampleInfo info;
        std::span<const float> samples;
    };
    /// Writes the files of samples and then, as `update` does, the index, so that all are there or
    /// none. False when that failed.
    [[nodiscard]] bool add(const std::vector<Kept>& added, const std::vector<SampleInfo>& known,
                           const std::set<std::string>& gone) const;

    /// Takes `gone` off the index, puts `added` at its end and keeps what others have put there
    /// meanwhile. An index that is malformed is put aside as "index-damaged-1.json" (or -2, …); a
    /// new one begins with those of `known` that have files. False when the index could not be
    /// read or written, which leaves it as it was.
    [[nodiscard]] bool update(const std::vector<SampleInfo>& known,
                              const std::vector<SampleInfo>& added,
                              const std::set<std::string>& gone) const;

    /// Removes the file of a sample that the index no longer lists.
    void remove(const std::string& id) const;

    /// Removes what programs that were killed have left: files that were never finished and
    /// recordings that no index names, but nothing while somebody is adding. For the start.
    void removeRubbish() const;

    [[nodiscard]] const std::filesystem::path& path() const { return folder_; }

  private:
    [[nodiscard]] bool replaceIndex(const std::vector<SampleInfo>& known,
                                    const std::vector<SampleInfo>& added,
                                    const std::set<std::string>& gone) const;
    [[nodiscard]] bool putDamagedIndexAside() const;

    std::filesystem::path folder_;
};

} // namespace vornic
