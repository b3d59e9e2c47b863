#pragma once

#include "VornicCore/foreign/PackFolder.h"

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>
#include <vector>

// One reader for each format. They throw ForeignPackError (or DecodeError for the text itself)
// where nothing can be made of the pack, and note everything smaller. Thread: any.

namespace vornic {

/// Mechvibes, both versions, and KeyEcho: an object with "defines", by number or by web name.
ForeignPack readMechvibes(const PackFolder& folder, const nlohmann::json& config);

/// mechvibes-dx: an object with "definitions".
ForeignPack readMechvibesDx(const PackFolder& folder, const nlohmann::json& config);

/// Neptune: files named by words ("space.wav"), in the folder. `config` only has a name.
ForeignPack readNeptune(const PackFolder& folder, const nlohmann::json& config);
/// Whether the folder has files of such names.
bool hasNeptuneFiles(const PackFolder& folder);

/// keyboardsounds of both generations: "profile.yaml".
ForeignPack readKeyboardSounds(const PackFolder& folder, const std::string& text);

/// Files "1e-1.wav" and "1e-0.wav", by the kernel's key code, in the folder.
ForeignPack readBucklespring(const PackFolder& folder);
bool hasBucklespringFiles(const PackFolder& folder);

/// One SFZ file; `name` as in the folder's files. `firstNote`: see addRegions.
ForeignPack readSfz(const PackFolder& folder, const std::string& name,
                    std::optional<int> firstNote);

/// One Decent Sampler preset.
ForeignPack readDecentSampler(const PackFolder& folder, const std::string& name,
                              const std::string& text, std::optional<int> firstNote);

/// Every preset of a daktilo file.
std::vector<ForeignPack> readDaktilo(const PackFolder& folder, const std::string& text);

/// Adds the recordings of `name`, which may be a range, to `takes`; whole files.
void addFiles(const PackFolder& folder, const std::string& name, std::vector<ForeignTake>& takes,
              PackNotes& notes);

} // namespace vornic
