#pragma once

#include "Vornic/app/StudioState.h"
#include "VornicCore/board/Board.h"

namespace vornic {

/// The sound of `board` that the Studio edits: the chosen one, or where that is gone the first;
/// null on a board without sounds. Thread: any, as everything here.
inline const SoundSpec* editedSound(const Board& board, const StudioState& studio) {
    if (board.sounds.empty()) {
        return nullptr;
    }
    const SoundSpec* const chosen = board.sound(studio.editingSoundID);
    return chosen != nullptr ? chosen : &board.sounds.front();
}

/// Whether it is the release of `sound` that is edited: where there is none, it is the press.
inline bool editsRelease(const SoundSpec& sound, const StudioState& studio) {
    return studio.editingRelease && sound.release.has_value();
}

} // namespace vornic
