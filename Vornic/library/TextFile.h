#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace vornic {

/// The bytes of a file of at most `largest` bytes. Throws std::runtime_error with a sentence that
/// names the file when it cannot be read, is no file or is larger.
std::string readTextFile(const std::filesystem::path& path, std::uintmax_t largest);

} // namespace vornic
