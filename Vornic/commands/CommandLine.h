#pragma once

#include "Vornic/commands/AutostartCommandLine.h"
#include "Vornic/commands/BoardRequest.h"
#include "Vornic/commands/ControlCommandLine.h"
#include "Vornic/commands/SliceCommand.h"
#include "Vornic/commands/TypeCommand.h"
#include "VornicCore/board/StageSpec.h"

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vornic {

/// What the command line says about the stage. Thread: main, as everything here.
struct StageChoice {
    std::optional<Placement> placement;
    std::optional<Room> room;
    std::optional<double> width;
    std::optional<double> distance;
    bool deskMat = false;

    /// Changes what was chosen and leaves the rest.
    void applyTo(StageSpec& stage) const;
};

/// Start the program and listen. What is absent is left to the settings.
struct RunRequest {
    std::optional<std::string> board;
    StageChoice stage;
    std::optional<OutputKind> outputKind;
    std::optional<double> volume;
    std::filesystem::path packs;
    /// Say in the log how well everything works; with its part that needs a microphone.
    bool selfTest = false;
    bool selfTestMicrophone = false;
    /// Write pictures of the views into this folder and end.
    std::optional<std::filesystem::path> snapshot;
    /// With them those of the settings and of the permission.
    bool snapshotAll = false;
    /// The layout whose letters stand on the drawn keys, by its name in the keyboard database; the
    /// session's where absent.
    std::optional<std::string> keymap;
    /// No window opens by itself.
    bool hidden = false;
    /// Show every control in every state.
    bool gallery = false;
    /// A board file to look at.
    std::optional<std::filesystem::path> open;
};

/// Print `text` and end with `status`: help, version, or what was wrong with the command line.
struct PrintRequest {
    std::string text;
    int status = 0;
};

/// `vornic type` with `--json`.
struct TypeCommandRequest {
    TypeRequest type;
    bool json = false;
};

/// `vornic slice` with `--json`.
struct SliceCommandRequest {
    SliceRequest slice;
    bool json = false;
};

/// `vornic doctor`.
struct DoctorRequest {
    std::filesystem::path packs;
    bool json = false;
};

using CommandRequest =
    std::variant<RunRequest, TypeCommandRequest, SliceCommandRequest, BoardRequest, ControlRequest,
                 DoctorRequest, AutostartRequest, PrintRequest>;

/// Reads the program's arguments (without its name). `defaultPacks` is where packs are when no
/// folder is named.
CommandRequest readCommandLine(const std::vector<std::string>& arguments,
                               const std::filesystem::path& defaultPacks);

} // namespace vornic
