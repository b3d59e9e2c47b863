#pragma once

#include "Vornic/commands/BoardRequest.h"
#include "Vornic/library/BoardStore.h"
#include "Vornic/library/SampleLibrary.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vornic {

/// What a command says. Thread: main, as everything here.
struct CommandOutcome {
    std::string text;
    /// Things the user should know although the command did its work.
    std::vector<std::string> remarks;
};

/// The boards and recordings that a command works on: those of the packs, and those of the user in
/// the user's folders.
struct BoardShelf {
    explicit BoardShelf(const std::filesystem::path& packs);

    BoardStore store;
    /// What the library could not write.
    std::vector<std::string> problems;
    SampleLibrary library;

  private:
    explicit BoardShelf(const std::vector<SoundPack>& packs);
};

/// Does what was asked. Throws std::runtime_error with a sentence for the user; then nothing has
/// changed, except that `WriteStrokes` may have written some of its files.
CommandOutcome runBoardCommand(const BoardRequest& request);

/// Reads the packs of other programs that a file or folder holds, says what they are, and adds
/// their boards to the user's unless it is only asked what they are. Throws std::runtime_error
/// where none could be read.
CommandOutcome importPacks(const ImportBoard& request, BoardShelf& shelf);

/// Writes a board as it is rendered into a folder, in the format of another program. Throws
/// std::runtime_error.
CommandOutcome exportForOthers(const ExportBoard& request, BoardShelf& shelf);

/// Writes one stroke of a board as a WAV file of 32-bit floats, mono: to the bit what the bank
/// holds that plays the board. Throws std::runtime_error.
CommandOutcome writeStroke(const WriteStroke& request, BoardShelf& shelf);

/// Writes every stroke of a board so, each into a file of its own: "01-soft-00.wav" is variation 0
/// of the first sound struck softly; there are "01-stabilised-soft-00.wav" and "01-release-00.wav"
/// too. The outcome is a report. Throws std::runtime_error.
CommandOutcome writeStrokes(const WriteStrokes& request, BoardShelf& shelf);

} // namespace vornic
