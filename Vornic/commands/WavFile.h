#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

struct sf_private_tag;

namespace vornic {

/// A WAV file being written: 48000 Hz, stereo, 32-bit floats. The file grows beside its place and
/// takes its name only when it is whole and on the disk. Equal sound gives equal bytes.
/// Thread: any, one for all calls.
class WavFile {
  public:
    WavFile() = default;
    ~WavFile();
    WavFile(const WavFile&) = delete;
    WavFile& operator=(const WavFile&) = delete;

    /// Begins a file that will be called `file`. False on an error.
    bool create(const std::filesystem::path& file);

    /// Appends as many frames as both channels have, which is the same number. False on an error,
    /// also an earlier one.
    bool append(std::span<const float> left, std::span<const float> right);

    /// Ends the file and gives it its name. False on an error, also an earlier one; nothing is left
    /// of the file then.
    bool finish();

    /// Gives the file up without a trace; harmless when there is none.
    void discard();

    /// What went wrong first; empty when nothing did.
    const std::string& error() const { return error_; }

  private:
    bool write();
    bool fail(const std::string& reason);
    bool failWithSystemError();

    std::filesystem::path file_;
    std::filesystem::path temporary_;
    int descriptor_ = -1;
    sf_private_tag* sound_ = nullptr;
    std::vector<float> waiting_; // interleaved frames that are not in the file yet
    std::uint64_t frames_ = 0;   // all frames appended
    std::string error_;
};

} // namespace vornic
