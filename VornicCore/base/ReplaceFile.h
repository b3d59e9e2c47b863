#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>

namespace vornic {

/// Gives `file` the content `bytes`, all or nothing: the bytes are written beside it, forced to the
/// disk, and then take its name, so that neither a crash nor a full disk leaves half a file. False
/// when that failed; a former file is then still there. Thread: any.
bool replaceFile(const std::filesystem::path& file, std::span<const std::byte> bytes);

/// When the bytes have to be on the disk. `later` is for what can be made again: it spares the wait
/// for the disk, and a power cut may take the file.
enum class OnDisk : std::uint8_t { now, later };

/// Who may read the file: whoever the user lets read new files, or nobody else.
enum class Readers : std::uint8_t { asUsual, owner };

/// The same, and says what went wrong; no error when it is done. Thread: any.
std::error_code tryReplaceFile(const std::filesystem::path& file, std::span<const std::byte> bytes,
                               OnDisk onDisk = OnDisk::now, Readers readers = Readers::asUsual);

/// Whether `file` has the name of what is written beside a file before it takes its name. Where
/// nobody writes, it is what a replacement that was cut short has left. Thread: any.
bool isBeside(const std::filesystem::path& file);

} // namespace vornic
