#pragma once

#include "Vornic/app/StudioState.h"
#include "VornicCore/board/Board.h"

#include <cstdint>
#include <set>

namespace vornic {

/// The keys of the board's drawn keyboard that a selection names; listed keys count wherever they
/// are.
std::set<std::int64_t> selectedKeys(const Board& board, const KeySelection::Any& selection);

} // namespace vornic
