#pragma once

#include "VornicCore/foreign/ExportPack.h"
#include "VornicCore/sampler/Velocity.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace vornic {

/// `vornic boards`.
struct ListBoards {
    bool json = false;
};

/// `vornic export BOARD FILE`.
struct ExportBoard {
    std::string board;
    std::filesystem::path file;
    /// For other programs: `file` is the folder to make.
    std::optional<ExportFormat> format = std::nullopt;
};

/// `vornic import FILE`: a board file, or a pack of another program, or a folder of such packs.
struct ImportBoard {
    std::filesystem::path file;
    /// Only says what it is.
    bool dryRun = false;
    /// Says it as JSON.
    bool json = false;
    /// Of instruments whose notes name no keys: the MIDI note of Escape.
    std::optional<int> firstNote = std::nullopt;
    /// The helper that decodes audio; empty: there is none.
    std::filesystem::path decoder = {};
};

/// `vornic stroke`.
struct WriteStroke {
    std::optional<std::string> board;
    /// A sound's id.
    std::string sound;
    Velocity velocity = Velocity::medium;
    /// Counted from 0.
    std::int64_t variant = 0;
    bool stabilised = false;
    /// The release, which has no velocity, instead of the press.
    bool release = false;
    /// The bank that plays has 1.
    std::uint64_t seed = 1;
    std::filesystem::path out;
};

/// `vornic render-board ID|FILE`.
struct WriteStrokes {
    std::string board;
    std::filesystem::path out;
    bool json = false;
};

/// A command that works on boards and ends. Thread: any, as everything here.
struct BoardRequest {
    std::variant<ListBoards, ExportBoard, ImportBoard, WriteStroke, WriteStrokes> what;
    /// Folder of the sound packs.
    std::filesystem::path packs;
};

} // namespace vornic
