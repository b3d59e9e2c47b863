#pragma once

#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/UnknownMembers.h"
#include "VornicCore/board/Board.h"
#include "VornicCore/board/StageSpec.h"

#include <string>
#include <string_view>

namespace vornic {

/// Reads a board. Throws DecodeError for a document that is not one to the letter; values are taken
/// as they are, without clamping. Thread: any.
Board decodeBoard(std::string_view text);

/// A board and what its document holds besides.
struct BoardDocument {
    Board board;
    UnknownMembers unknown;
};
/// The same, with the members that this version does not know, for writing them again.
BoardDocument decodeBoardDocument(std::string_view text);

/// Writes a board. Throws EncodeError if it holds a number that is not finite or a text that is not
/// UTF-8. Thread: any.
std::string encodeBoard(const Board& board, const UnknownMembers& unknown = {});

/// The same for a stage.
StageSpec decodeStage(std::string_view text);
std::string encodeStage(const StageSpec& stage);

} // namespace vornic
