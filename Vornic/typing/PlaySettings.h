#pragma once

#include "Vornic/sound/PlayedBoard.h"
#include "VornicCore/board/OutputKind.h"
#include "VornicCore/board/StageSpec.h"

namespace vornic {

/// Everything of the application's state that a keystroke depends on. The main thread makes a new
/// one at every change and hands it to the key thread whole. Thread: any, once it is made.
struct PlaySettings {
    /// The board that is heard, and its sounds.
    PlayedBoard played;
    /// Where the keyboard stands.
    StageSpec stage;
    /// Whether voices get a binaural stage.
    bool binaural = false;
    /// Whether the program is quiet at the moment.
    bool silenced = false;
};

/// Whether voices get a binaural stage: on the desk and heard on the ears.
/// `onHeadphones` says what the current output device is and decides when `kind` is automatic.
/// Thread: any.
bool wantsBinaural(Placement placement, OutputKind kind, bool onHeadphones);

} // namespace vornic
