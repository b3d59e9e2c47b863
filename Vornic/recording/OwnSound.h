#pragma once

#include "Vornic/recording/StrokeImport.h"
#include "VornicCore/board/SoundSpec.h"

namespace vornic {

/// The sound that a finished session makes, to be added to a board: one layer that lists its
/// strokes, and a release of its own where releases were kept; nothing shapes them. Under a fresh
/// id. Thread: any.
SoundSpec soundOf(const FinishedImport& finished);

} // namespace vornic
