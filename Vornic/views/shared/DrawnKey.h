#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/keys/KeyboardLayout.h"

#include <QVariantMap>

namespace vornic {

/// A key as the views draw it: { code, label, x, y, w, h, sound, soundName, selected, own }.
/// Lengths in key units; `code` is -1 for a key that cannot be heard, `sound` the place of what the
/// key plays on `board`, -1 without that; `own` says that the key overrides its group.
/// `board` may be null. Thread: any.
QVariantMap drawnKey(const LayoutKey& key, const Board* board);

} // namespace vornic
