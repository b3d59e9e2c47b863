#pragma once

#include "VornicCore/packs/Manifest.h"

#include <filesystem>
#include <string_view>
#include <vector>

/// The files of a pack folder, as `SoundPack` reads them.
namespace vornic::packs {

/// Writes the strokes as WORD-01.wav and so on. False when one could not be written.
bool writeStrokes(const std::vector<std::vector<float>>& strokes, std::string_view word,
                  const std::filesystem::path& folder);

/// Writes pack.json. False when it could not be written.
bool writeManifest(const Manifest& manifest, const std::filesystem::path& folder);

} // namespace vornic::packs
