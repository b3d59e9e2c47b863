#pragma once

#include "Vornic/commands/BoardCommands.h"

namespace vornic {

/// Whether the file is a board file, as far as its beginning tells; anything else may be a pack.
bool isBoardFile(const std::filesystem::path& file);

/// Reads the packs of other programs that a file or folder holds, says what they are, and adds
/// their boards to the user's unless it is only asked what they are. Throws std::runtime_error
/// where none could be read.
CommandOutcome importPacks(const ImportBoard& request, BoardShelf& shelf);

} // namespace vornic
