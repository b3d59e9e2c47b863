#pragma once

#include "Vornic/recording/DecoderProcess.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace vornic {

/// A file of typing read for the slicer.
struct RecordingRead {
    /// 48 kHz mono; none when the file could not be read or the reading was stopped.
    std::optional<std::vector<float>> samples;
    /// Where there are none: what is wrong with the file, for the log and the command line. Where
    /// there are: what the user should know, mostly nothing.
    std::string remark;
    /// The file's own rate, in Hz; 0 where it could not be read.
    double rate = 0.0;
};

struct ReadOptions {
    /// The helper that decodes; empty: there is none, and nothing can be read.
    std::filesystem::path decoder;
    /// Told now and then how much has been read, 0 to 1, as far as the file says how long it is.
    /// On the calling thread.
    std::function<void(double)> progress;
    std::stop_token stop;
    /// What comes after is not read, so that a file of hours takes no more time and memory.
    double longestSeconds = 600.0;
};

/// Reads a recording with the helper: what `loadAudio` knows, and M4A and its like. Thread: any.
RecordingRead readRecording(const std::filesystem::path& file, const ReadOptions& options);

/// The same with a decoder that has read other files before, in place of `options.decoder`.
RecordingRead readRecording(const std::filesystem::path& file, Decoder& decoder,
                            const ReadOptions& options);

} // namespace vornic
