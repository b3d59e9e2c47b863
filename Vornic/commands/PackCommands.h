#pragma once

#include "Vornic/commands/BoardCommands.h"

namespace vornic {

/// Reads the packs of other programs that a file or folder holds, says what they are, and adds
/// their boards to the user's unless it is only asked what they are. Throws std::runtime_error
/// where none could be read. Thread: main, as everything here.
CommandOutcome importPacks(const ImportBoard& request, BoardShelf& shelf);

/// Writes a board as it is rendered into a folder, in the format of another program. Throws
/// std::runtime_error.
CommandOutcome exportForOthers(const ExportBoard& request, BoardShelf& shelf);

} // namespace vornic
