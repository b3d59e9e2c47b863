#pragma once

#include "Vornic/commands/OfflinePlayer.h"
#include "VornicCore/board/StageSpec.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// What `vornic type` was asked to do. Thread: main, as everything here.
struct TypeRequest {
    /// The text to type; absent when a key file is played.
    std::optional<std::string> text;
    /// The key file to play; absent when a text is typed.
    std::optional<std::filesystem::path> keys;
    /// Id of a built-in board or path of a board's JSON file; absent: the default board.
    std::optional<std::string> board;
    std::uint64_t seed = 0;
    StageSpec stage;
    OutputKind outputKind = OutputKind::automatic;
    /// 0 to 1.
    double volume = 0.7;
    bool raw = false;
    std::filesystem::path out;
    /// Folder of the sound packs.
    std::filesystem::path packs;
};

/// What became of it.
struct TypeOutcome {
    OfflineReport report;
    /// Things the user should know although the file was written.
    std::vector<std::string> remarks;
};

/// Plays the request into its file. Throws std::runtime_error with a sentence for the user; then no
/// file was written.
TypeOutcome typeIntoFile(const TypeRequest& request);

/// Plays given events; the part of `typeIntoFile` that the demo shares.
TypeOutcome playIntoFile(const TypeRequest& request, const std::vector<KeyEvent>& events);

/// `{"keys":…,"started":…,"dropped":…,"stolen":…,"peak":…,"frames":…}`.
std::string reportAsJson(const OfflineReport& report);

} // namespace vornic
