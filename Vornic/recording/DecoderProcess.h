#pragma once

#include "VornicCore/audiofiles/AudioStream.h"

#include <filesystem>
#include <memory>
#include <stop_token>

namespace vornic {

/// Where the helper program for further audio formats is, given where the program itself is; an
/// empty path when it is not installed.
std::filesystem::path findDecoder(const std::filesystem::path& program);

/// Opens an audio file that `openSoundFile` does not know, M4A above all, with the helper
/// `decoder`: what goes wrong inside a hostile file ends that process and nothing else. None when
/// the helper is missing or does not know the file either. A read that is waiting ends with an
/// error when a stop is requested. Any thread.
std::unique_ptr<AudioStream> openWithDecoder(const std::filesystem::path& decoder,
                                             const std::filesystem::path& file,
                                             std::stop_token stop = {});

} // namespace vornic
