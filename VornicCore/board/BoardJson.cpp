#include "VornicCore/board/BoardJson.h"

#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/board/BoardRecords.h"

namespace vornic {

Board decodeBoard(std::string_view text) {
    return decodeJson<Board>(text);
}

std::string encodeBoard(const Board& board) {
    return encodeJson(board);
}

StageSpec decodeStage(std::string_view text) {
    return decodeJson<StageSpec>(text);
}

std::string encodeStage(const StageSpec& stage) {
    return encodeJson(stage);
}

} // namespace vornic
