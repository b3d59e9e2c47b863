#pragma once

#include <filesystem>
#include <span>

namespace vornic {

/// Writes `samples` (48 kHz mono) as a 16-bit PCM WAV file. A sample becomes its value times 32768,
/// rounded to the nearest integer and kept within 16 bits; one that is no number becomes 0. The
/// file appears whole or not at all; a failure writes nothing and is not reported. More than
/// 4294967295 samples stop the program; more than such a file can hold count as a failure.
void writeWAV(std::span<const float> samples, const std::filesystem::path& file);

} // namespace vornic
