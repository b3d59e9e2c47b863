#pragma once

#include "Vornic/recording/HelperProcess.h"
#include "VornicCore/audiofiles/AudioStream.h"

#include <filesystem>
#include <memory>
#include <stop_token>
#include <utility>

namespace vornic {

/// Where the helper program that reads what others made is, given where the program itself is; an
/// empty path when it is not installed. Thread: any.
std::filesystem::path findDecoder(const std::filesystem::path& program);

/// Decodes audio files that somebody made with the helper, one after the other in one process. What
/// goes wrong inside a hostile file ends that process and nothing else; the next file gets a fresh
/// one. Thread: any, one at a time.
class Decoder {
  public:
    /// `helper` may be empty: then nothing can be opened.
    explicit Decoder(std::filesystem::path helper) : program_(std::move(helper)) {}

    const std::filesystem::path& program() const { return program_; }

    /// Opens a file, which the helper gets as a descriptor; to be read before the next one is
    /// opened. None when the helper is missing or does not know the file. A read that is waiting
    /// ends with an error when a stop is requested.
    std::unique_ptr<AudioStream> open(const std::filesystem::path& file, std::stop_token stop = {});

  private:
    std::filesystem::path program_;
    std::shared_ptr<HelperProcess> helper_; // shared with the stream that is read
};

/// Opens a file with a helper of its own, which ends with the stream. Thread: any.
std::unique_ptr<AudioStream> openWithDecoder(const std::filesystem::path& decoder,
                                             const std::filesystem::path& file,
                                             std::stop_token stop = {});

} // namespace vornic
