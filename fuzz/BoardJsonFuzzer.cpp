#include "VornicCore/board/BoardJson.h"
#include "VornicCore/realtime/Fatal.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace {

std::optional<vornic::Board> decoded(std::string_view text) {
    try {
        return vornic::decodeBoard(text);
    } catch (const vornic::DecodeError&) {
        return std::nullopt;
    }
}

} // namespace

/// Whatever the bytes are, they make a board or the declared error; a board that was read can be
/// written, and reads back as it was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::optional<vornic::Board> board = decoded({reinterpret_cast<const char*>(data), size});
    if (board) {
        const std::string text = vornic::encodeBoard(*board);
        const std::optional<vornic::Board> back = decoded(text);
        vornic::require(back == board, "a board reads back as it was written");
        vornic::require(vornic::encodeBoard(*back) == text, "a board is written the same again");
    }
    return 0;
}
