#pragma once

#include "Vornic/recording/StrokeImport.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/board/SoundSpec.h"

#include <string>

namespace vornic {

/// The sound that a finished session makes, to be added to a board: one layer that lists its
/// strokes, and a release of its own where releases were kept; nothing shapes them. Under a fresh
/// id.
SoundSpec soundOf(const FinishedImport& finished);

/// Makes every key of `board` play its sound `sound`; how loud each is, where, and so on stays.
/// Nothing when the board has no such sound.
void playEverywhere(Board& board, const std::string& sound);

} // namespace vornic
