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

} // namespace vornic
