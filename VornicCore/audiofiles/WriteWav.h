#pragma once

#include "VornicCore/base/ReplaceFile.h"

#include <filesystem>
#include <span>
#include <system_error>

namespace vornic {

/// Writes `samples` (48 kHz mono) as a 16-bit PCM WAV file. A sample becomes its value times 32768,
/// rounded to the nearest integer and kept within 16 bits; one that is no number becomes 0. The
/// file appears whole or not at all; false when nothing was written. More than 4294967295 samples
/// stop the program; more than such a file can hold count as a failure. Thread: any.
bool writeWAV(std::span<const float> samples, const std::filesystem::path& file,
              Readers readers = Readers::asUsual);

/// Writes `samples` (48 kHz mono) as a WAV file of 32-bit floats, bit by bit as they are. The file
/// appears whole or not at all, on the disk some time later; a failure is returned.
std::error_code writeFloatWAV(std::span<const float> samples, const std::filesystem::path& file);

} // namespace vornic
