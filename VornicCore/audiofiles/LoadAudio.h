#pragma once

#include <filesystem>
#include <optional>
#include <vector>

namespace vornic {

/// The longest file that `loadAudio` reads, in seconds. It bounds the memory that a hostile file
/// can claim: at most 10 minutes at 48 kHz, 110 MiB.
inline constexpr double longestAudioSeconds = 600;

/// Reads an audio file (WAV, AIFF, FLAC, Ogg, Opus or MP3) of any sample rate from 1 kHz to 768 kHz
/// and up to 64 channels as 48 kHz mono: channels are averaged, samples that are no finite number
/// become 0. A 16-bit sample is its integer over 32768; a 48 kHz mono file loads unchanged. None
/// for a file that cannot be read whole (unknown format, cut short, without frames, longer than
/// `longestAudioSeconds`); never throws for a bad file. Thread: any, as everything here.
std::optional<std::vector<float>> loadAudio(const std::filesystem::path& file);

} // namespace vornic
