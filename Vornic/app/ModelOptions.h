#pragma once

#include "Vornic/sound/RenderService.h"
#include "VornicCore/board/OutputKind.h"
#include "VornicCore/board/StageSpec.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace vornic {

/// Where the model's files are, and what counts for this run whatever the settings say.
/// Thread: any.
struct ModelOptions {
    /// Folder of the sound packs.
    std::filesystem::path packs;
    std::filesystem::path settingsFile;
    /// The user's own boards and samples.
    std::filesystem::path boards;
    std::filesystem::path samples;

    /// The helper for audio formats such as M4A, as in ReadOptions; empty: there is none.
    std::filesystem::path decoder{};

    /// A board's id, or the path of a board's file.
    std::optional<std::string> board;
    /// 0 to 1.
    std::optional<double> volume;
    std::optional<OutputKind> outputKind;
    /// Changes the stage of the settings.
    std::function<void(StageSpec&)> stage = [](StageSpec&) {};

    /// What renders boards.
    RenderService::Build builder = RenderService::build;
};

} // namespace vornic
