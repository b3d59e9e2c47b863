#include "VornicCore/board/BoardJson.h"
#include "tests/VornicCore/board/RandomBoard.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(BoardRoundTrip, everyBoardReadsBackAsItWas) {
    for (std::uint64_t seed = 0; seed < 500; ++seed) {
        const Board board = RandomBoard(seed).board();
        const std::string text = encodeBoard(board);
        const Board back = decodeBoard(text);
        ASSERT_EQ(back, board) << seed;
        // Catches what equality does not see, such as the sign of a zero.
        ASSERT_EQ(encodeBoard(back), text) << seed;
    }
}

TEST(BoardRoundTrip, everyStageReadsBackAsItWas) {
    RandomBoard random(1);
    for (int i = 0; i < 500; ++i) {
        const StageSpec stage = random.stage();
        ASSERT_EQ(decodeStage(encodeStage(stage)), stage);
    }
}

} // namespace
} // namespace vornic
