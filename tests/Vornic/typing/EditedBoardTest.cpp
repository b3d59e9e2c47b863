// A board that was edited plays at once, from the sounds that there are.

#include "tests/Vornic/typing/KeystrokeFixture.h"

namespace vornic {
namespace {

class EditedBoardTest : public KeystrokeFixture {
  protected:
    /// Plays `edited` while the bank is still that of the plain board.
    void useEdited(const Board& edited) {
        auto settings = std::make_shared<PlaySettings>();
        settings->played = {.board = std::make_shared<const Board>(edited),
                            .rendered = std::make_shared<const Board>(plainBoard()),
                            .bank = bank};
        driver.apply(settings);
    }
};

TEST_F(EditedBoardTest, whatNeedsNoRenderingIsHeardAtOnce) {
    Board edited = plainBoard();
    edited.keys["3"] = Assignment(std::nullopt, -20.0, 0.0, 1.0, ReleaseMode::on);
    useEdited(edited);
    pressAfterPause(letterF);
    const Heard press = heard();
    EXPECT_NEAR(panOf(press), 1.0, 1e-6);
    EXPECT_LT(gainOf(press, 0.001f), 0.4) << "20 dB below, of whatever velocity";
    engine.core().clear();
    driver.key(letterF, false, 0);
    EXPECT_GT(heard().right, 0.001f);
}

TEST_F(EditedBoardTest, aKeyWhoseNewSoundIsYetToBeRenderedPlaysTheOneBefore) {
    Board edited = plainBoard();
    SoundSpec fresh = edited.sounds.front();
    fresh.id = "fresh";
    edited.sounds.push_back(fresh);
    edited.feel.speedSensitivity = 0.0;
    edited.keys["3"] = Assignment("fresh", 0.0, 0.0, std::nullopt, ReleaseMode::inherit);
    edited.keys["49"] = Assignment("fresh", 0.0, 0.0, std::nullopt, ReleaseMode::inherit);
    useEdited(edited);
    pressAfterPause(letterF);
    EXPECT_NEAR(gainOf(heard(), 0.002f), 1.0, 0.2);
    engine.core().clear();
    pressAfterPause(space);
    EXPECT_NEAR(gainOf(heard(), 0.012f), 1.0, 0.2) << "the stabilised pool";
    EXPECT_EQ(driver.played(), 2);
}

TEST_F(EditedBoardTest, aKeyThatHadNoSoundBeforeIsSilentUntilItsOwnIsRendered) {
    Board edited = plainBoard();
    edited.sounds.front().id = "fresh";
    auto settings = std::make_shared<PlaySettings>();
    Board none = plainBoard();
    none.sounds.clear();
    settings->played = {.board = std::make_shared<const Board>(edited),
                        .rendered = std::make_shared<const Board>(none),
                        .bank = bank};
    driver.apply(settings);
    pressAfterPause(letterF);
    EXPECT_EQ(driver.played(), 0);
}

TEST_F(EditedBoardTest, aSoundThatRenderedToNothingIsSilent) {
    Board board = plainBoard();
    board.sounds.front().id = "empty";
    useBoard(board);
    pressAfterPause(letterF);
    EXPECT_EQ(driver.played(), 0);
}

} // namespace
} // namespace vornic
