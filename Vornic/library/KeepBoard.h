#pragma once

#include "Vornic/library/BoardStore.h"
#include "Vornic/library/SampleLibrary.h"
#include "VornicCore/board/BoardFile.h"

namespace vornic {

/// Makes a board and its recordings the user's, under fresh ids: nothing in it becomes a path or
/// takes the place of something that is there. Throws BoardTransferError; then nothing was added.
/// Thread: main.
Board keepBoard(BoardFile::Contents contents, BoardStore& store, SampleLibrary& library);

} // namespace vornic
