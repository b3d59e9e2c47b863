#pragma once

#include <filesystem>

namespace vornic {

/// Writes a pack "spring" into `packs` whose every press is a click that starts with its first
/// frame, so that the onset in the output tells when the voice began. Throws on a write error.
void writeClickPack(const std::filesystem::path& packs);

} // namespace vornic
