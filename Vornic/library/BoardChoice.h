#pragma once

#include "Vornic/library/BoardStore.h"
#include "Vornic/library/SampleLibrary.h"
#include "VornicCore/board/Board.h"

#include <optional>
#include <string>

namespace vornic {

/// The board that `wanted` names: the id of a board in `store`, else the path of a board file or of
/// a board's JSON file. The recordings in a board file join `library` for this run. Without a wish
/// it is the default board or, where its pack is missing, the first there is. Throws
/// std::runtime_error with a sentence for the user. Thread: main.
Board chooseBoard(const std::optional<std::string>& wanted, const BoardStore& store,
                  SampleLibrary& library);

} // namespace vornic
