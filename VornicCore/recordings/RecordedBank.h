#pragma once

#include "VornicCore/board/Board.h"
#include "VornicCore/sampler/VoiceBank.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Gives the recording stored under a sample identifier, 48 kHz mono, or none.
using RecordingLookup = std::function<std::optional<std::vector<float>>(const std::string& id)>;

/// A bank that plays a board's recordings as they are, without its chain, parts and character: the
/// pool of each sound holds every recording of its press stroke, the same for all velocities and
/// stabilised or not; its release pool every recording of its release stroke. A muted layer gives
/// none, and where a layer is solo only solo ones do. Recordings that `recording` lacks are left
/// out. Never on the audio thread; calls `recording` on the caller's.
VoiceBank recordedBank(const Board& board, const RecordingLookup& recording);

} // namespace vornic
