#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vornic {

/// What a sound pack says about itself: the JSON object in its "pack.json". All four members are
/// required strings.
struct Manifest {
    std::string id;        ///< Pack identifier; the first part of its sample identifiers.
    std::string name;      ///< Shown to the user.
    std::string character; ///< A short description.
    std::string credit;    ///< Who is credited for the recordings.

    bool operator==(const Manifest&) const = default;

    /// Reads the manifest at `file`. None when the file is missing, larger than 64 KiB, no JSON
    /// object, or lacks one of the members; never throws for a bad file. Thread: any.
    static std::optional<Manifest> read(const std::filesystem::path& file);
};

} // namespace vornic
