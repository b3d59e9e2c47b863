#pragma once

#include "VornicCore/base/JsonError.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/board/StageSpec.h"

#include <string>
#include <string_view>

namespace vornic {

/// Reads a board. Throws DecodeError for a document that is not one to the letter; values are taken
/// as they are, without clamping. Any thread.
Board decodeBoard(std::string_view text);

/// Writes a board. Throws EncodeError if it holds a number that is not finite or a text that is not
/// UTF-8. Any thread.
std::string encodeBoard(const Board& board);

/// The same for a stage.
StageSpec decodeStage(std::string_view text);
std::string encodeStage(const StageSpec& stage);

} // namespace vornic
