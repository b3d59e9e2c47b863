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
/// are there. Other programs may use the folder at the same time. Any thread.
class UserSampleFolder {
  public:
    /// An empty path stands for no folder: it holds nothing, and writing to it fails.
    explicit UserSampleFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// Where the sample `id` is kept: every "/" of the id becomes "_".
    [[nodiscard]] std::filesystem::path fileOf(const std::string& id) const;

    /// What the index lists; nothing where it is missing, malformed or cannot be read.
    [[nodiscard]] std::vector<SampleInfo> listed() const;

    /// Writes the file of a sample, whole or not at all; the index is left alone. False when that
    /// failed.
    [[nodiscard]] bool write(const std::string& id, std::span<const float> samples) const;

    /// Takes `gone` off the index, puts `added` at its end and keeps what others have put there
    /// meanwhile. An index that is malformed is put aside as "index-damaged-1.json" (or -2, …); a
    /// new one begins with those of `known` that have files. False when the index could not be
    /// read or written, which leaves it as it was.
    [[nodiscard]] bool update(const std::vector<SampleInfo>& known,
                              const std::vector<SampleInfo>& added,
                              const std::set<std::string>& gone) const;

    /// Removes the file of a sample that the index no longer lists.
    void remove(const std::string& id) const;

    [[nodiscard]] const std::filesystem::path& path() const { return folder_; }

  private:
    [[nodiscard]] bool putDamagedIndexAside() const;

    std::filesystem::path folder_;
};

} // namespace vornic
