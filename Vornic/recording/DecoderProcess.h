#pragma once

#include "VornicCore/audiofiles/AudioStream.h"

#include <filesystem>
#include <memory>
#include <stop_token>

namespace vornic {

/// Where the helper program that reads audio files is, given where the program itself is; an empty
/// path when it is not installed. Thread: any.
std::filesystem::path findDecoder(const std::filesystem::path& program);

/// Opens an audio file that somebody made, with the helper `decoder`, which gets it as a
/// descriptor: what goes wrong inside a hostile file ends that process and nothing else. None when
/// the helper is missing or does not know the file. A read that is waiting ends with an error when
/// a stop is requested. Thread: any.
std::unique_ptr<AudioStream> openWithDecoder(const std::filesystem::path& decoder,
                                             const std::filesystem::path& file,
                                             std::stop_token stop = {});

} // namespace vornic
