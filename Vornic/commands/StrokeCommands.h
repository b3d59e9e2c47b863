#pragma once

#include "Vornic/commands/BoardCommands.h"
#include "Vornic/commands/BoardRequest.h"

namespace vornic {

/// Writes one stroke of a board as a WAV file of 32-bit floats, mono: to the bit what the bank
/// holds that plays the board. Throws std::runtime_error. Thread: main, as everything here.
CommandOutcome writeStroke(const WriteStroke& request, BoardShelf& shelf);

/// Writes every stroke of a board so, each into a file of its own: "01-soft-00.wav" is variation 0
/// of the first sound struck softly; there are "01-stabilised-soft-00.wav" and "01-release-00.wav"
/// too. The outcome is a report. Throws std::runtime_error.
CommandOutcome writeStrokes(const WriteStrokes& request, BoardShelf& shelf);

} // namespace vornic
