#pragma once

#include "VornicCore/foreign/FindPacks.h"
#include "VornicCore/foreign/PackFiles.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// How a folder of a pack goes to the process that reads its descriptions, and how what is found in
// it comes back. Both are of one build; what comes back is not trusted. Thread: any.

namespace vornic {

/// The most bytes that go either way.
inline constexpr std::size_t mostPackBytes = std::size_t{64} << 20U;

/// The names of all files, and of those that are no audio the texts, as far as there is room.
std::string bytesOfFolder(const PackFiles& files, const FindOptions& options);

/// What bytesOfFolder has written, looked through for packs, as the bytes that come back. Throws
/// ForeignPackError.
std::string bytesOfPacksIn(std::string_view folder);

/// What bytesOfPacksIn has written. Throws ForeignPackError for anything else, and for packs that
/// name a file that `files` does not have.
std::vector<FoundPack> packsOfBytes(std::string_view bytes, const PackFiles& files);

} // namespace vornic
