#include "VornicCore/board/BoardJson.h"

#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/board/BoardRecords.h"

namespace vornic {

Board decodeBoard(std::string_view text) {
    return decodeJson<Board>(text);
}

BoardDocument decodeBoardDocument(std::string_view text) {
    const nlohmann::json document = parseJson(text);
    BoardDocument read;
    read.board = JsonValue<Board>::read(JsonReader(document));
    read.unknown = UnknownMembers::in(document, JsonValue<Board>::write(read.board));
    return read;
}

std::string encodeBoard(const Board& board, const UnknownMembers& unknown) {
    nlohmann::json document = JsonValue<Board>::write(board);
    unknown.addTo(document);
    return writeJson(document);
}

StageSpec decodeStage(std::string_view text) {
    return decodeJson<StageSpec>(text);
}

std::string encodeStage(const StageSpec& stage) {
    return encodeJson(stage);
}

} // namespace vornic
