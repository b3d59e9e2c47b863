#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <system_error>

namespace vornic {

/// Gives `file` the content `bytes`, all or nothing: the bytes are written beside it, forced to the
/// disk, and then take its name, so that neither a crash nor a full disk leaves half a file. False
/// when that failed; a former file is then still there. Any thread.
bool replaceFile(const std::filesystem::path& file, std::span<const std::byte> bytes);

/// The same, and says what went wrong; no error when it is done.
std::error_code tryReplaceFile(const std::filesystem::path& file, std::span<const std::byte> bytes);

} // namespace vornic
