#pragma once

#include "Vornic/commands/WavFile.h"
#include "Vornic/ports/AudioOutput.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace vornic {

/// Plays into a WAV file as fast as it can be computed: the owner asks for one block after the
/// other, and every block is given the time at which a real output would have asked for it.
/// Thread: any, one for all calls.
class FileOutput final : public AudioOutput {
  public:
    static constexpr std::int64_t blockFrames = 128;

    /// The time of the first block, in nanoseconds: not 0, which stands for an unknown time.
    static constexpr std::uint64_t startNanos = 1'000'000'000;

    /// Nothing is written before `open`, and `file` does not change before `finish`.
    explicit FileOutput(std::filesystem::path file);

    void open(Source& source) override;

    /// Gives up a file that has not been finished.
    void close() override;

    bool requestStart() override;
    void pause() override { running_ = false; }
    bool isRunning() const override { return running_; }
    OutputDeviceFacts device() const override;
    std::string problem() const override;

    /// The time of the next block, in nanoseconds.
    std::uint64_t nanos() const;

    /// Frames written so far.
    std::int64_t frames() const { return frames_; }

    /// The loudest sample so far, as a positive number.
    float peak() const { return peak_; }

    /// The loudest sample of the last block, as a positive number.
    float blockPeak() const { return blockPeak_; }

    /// Renders the next block, silence while paused, and writes it. False after an error.
    bool renderBlock();

    /// Gives the file its name, replacing a former one. False, with a `problem`, when it could not
    /// be written as a whole; a former file is still there then.
    bool finish();

  private:
    std::filesystem::path file_;
    WavFile wav_;
    Source* source_ = nullptr;
    bool running_ = false;
    std::int64_t frames_ = 0;
    float peak_ = 0.0F;
    float blockPeak_ = 0.0F;
};

} // namespace vornic
