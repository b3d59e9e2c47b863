#include "VornicCore/board/json/BoardJson.h"

#include "VornicCore/board/json/BoardRecords.h"
#include "VornicCore/board/json/JsonCodec.h"

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
