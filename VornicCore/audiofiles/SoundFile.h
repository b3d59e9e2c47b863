#pragma once

#include "VornicCore/audiofiles/AudioStream.h"

#include <filesystem>
#include <memory>

namespace vornic {

/// Opens an audio file (WAV, AIFF, FLAC, Ogg, Opus or MP3) of any sample rate from 1 kHz to 768 kHz
/// and up to 64 channels, which are averaged. A 16-bit sample is its integer over 32768; samples
/// that are no finite number become 0. None for what is no such file or was cut short; never throws
/// for a bad file. Thread: any.
std::unique_ptr<AudioStream> openSoundFile(const std::filesystem::path& file);

/// The same for a regular file that is open for reading; `descriptor` stays the caller's and is
/// used until the stream has gone. Only reads and seeks. Thread: any.
std::unique_ptr<AudioStream> openSoundFile(int descriptor);

} // namespace vornic
