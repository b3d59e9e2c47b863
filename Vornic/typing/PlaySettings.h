#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/board/OutputKind.h"
#include "VornicCore/board/StageSpec.h"

#include <memory>

namespace vornic {

/// Everything of the application's state that a keystroke depends on. The main thread makes a new
/// one at every change and hands it to the key thread whole.
struct PlaySettings {
    /// The board that is heard; none leaves every key silent.
    std::shared_ptr<const Board> board;
    /// The gain of every key, besides what the board says.
    double gain = 1.0;
    /// Where the keyboard stands.
    StageSpec stage;
    /// Whether voices get a binaural stage.
    bool binaural = false;
    /// Whether the program is quiet at the moment.
    bool silenced = false;
};

/// Whether voices get a binaural stage: on the desk and heard on the ears.
/// `onHeadphones` says what the current output device is and decides when `kind` is automatic.
bool wantsBinaural(Placement placement, OutputKind kind, bool onHeadphones);

} // namespace vornic
