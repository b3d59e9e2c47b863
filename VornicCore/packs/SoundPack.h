#pragma once

#include "VornicCore/keys/KeyClass.h"
#include "VornicCore/packs/Manifest.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// A folder of recorded keystrokes: "pack.json" and one WAV file per stroke, a press named by its
/// key class ("regular-01.wav"), a release by "release-". Holds names only; the audio stays on
/// disk. A value. Thread: any, as everything here.
struct SoundPack {
    Manifest manifest;
    std::filesystem::path folder;
    std::map<KeyClass, std::vector<std::filesystem::path>> files; ///< Presses, by file name.
    std::vector<std::filesystem::path> releaseFiles;              ///< Releases, by file name.

    /// The pack used where none is named.
    static constexpr std::string_view defaultID = "deep";

    bool operator==(const SoundPack&) const = default;

    [[nodiscard]] const std::string& id() const { return manifest.id; }
    [[nodiscard]] const std::string& name() const { return manifest.name; }

    /// The identifier of one of the pack's files in the sample library: pack id, "/", file name
    /// without extension, as in "clicky/regular-01".
    [[nodiscard]] std::string sampleID(const std::filesystem::path& file) const;

    /// Reads the pack in `folder`. None when its manifest is missing or malformed, or when it has
    /// no press recording.
    static std::optional<SoundPack> load(const std::filesystem::path& folder);

    /// Sorts the names of press recordings by the key class before their first "-". Names that do
    /// not end in ".wav" and names of no key class are left out. Keeps the order of `names`.
    static std::map<KeyClass, std::vector<std::string>>
    group(const std::vector<std::string>& names);

    /// Every pack among the entries of `folder`, in the order in which packs are offered: deep,
    /// soft, plastic, metal, clicky, spring, then all others; equal ones by name. Entries that
    /// are no pack are left out; a folder that cannot be listed gives none.
    static std::vector<SoundPack> all(const std::filesystem::path& folder);
};

/// The word by which a pack's file names say the key class: "regular", "space", "enter",
/// "backspace" or "modifier".
std::string_view packFileWord(KeyClass keyClass);

} // namespace vornic
