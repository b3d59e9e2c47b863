#include "Vornic/app/EditHistory.h"

#include "tests/support/ManualClock.h"
#include "tests/support/Required.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

Board named(const std::string& name) {
    Board board;
    board.name = name;
    return board;
}

/// A board with a history, edited as the model does.
class EditHistoryTest : public ::testing::Test {
  protected:
    void edit(const std::string& name) {
        history.edit(board, clock.seconds());
        board = named(name);
    }
    void wait(double seconds) { clock.advance(seconds); }
    bool undo() { return take(history.undo(board)); }
    bool redo() { return take(history.redo(board)); }

    EditHistory history;
    ManualClock clock;
    Board board = named("start");

  private:
    bool take(std::optional<Board> step) {
        if (step) {
            board = *std::move(step);
        }
        return step.has_value();
    }
};

TEST_F(EditHistoryTest, withoutAnEditThereIsNothingToUndoOrRedo) {
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
    EXPECT_FALSE(undo());
    EXPECT_FALSE(redo());
}

TEST_F(EditHistoryTest, goesBackStepByStep) {
    edit("one");
    wait(1);
    edit("two");
    ASSERT_TRUE(undo());
    EXPECT_EQ(board.name, "one");
    ASSERT_TRUE(undo());
    EXPECT_EQ(board.name, "start");
    EXPECT_FALSE(undo());
}

TEST_F(EditHistoryTest, aDraggedSliderIsOneStep) {
    for (int step = 0; step < 20; ++step) {
        edit("drag " + std::to_string(step));
        wait(0.59);
    }
    ASSERT_TRUE(undo());
    EXPECT_EQ(board.name, "start");
    EXPECT_FALSE(history.canUndo());
}

TEST_F(EditHistoryTest, mergesAtExactlyTheLimitAndNotBeyond) {
    // Times that doubles hold exactly: a sum of clock ticks would decide by its rounding.
    history.edit(named("a"), 0.0);
    history.edit(named("b"), 0.6);
    EXPECT_EQ(required(history.undo(named("c"))).name, "a");
    EXPECT_FALSE(history.canUndo());

    EditHistory later;
    later.edit(named("a"), 0.0);
    later.edit(named("b"), 0.6001);
    EXPECT_EQ(required(later.undo(named("c"))).name, "b");
    EXPECT_TRUE(later.canUndo());
}

TEST_F(EditHistoryTest, anEditRightAfterTheLastStepWasUndoneIsAStepOfItsOwn) {
    edit("one");
    ASSERT_TRUE(undo());
    wait(0.1);
    edit("two");
    ASSERT_TRUE(undo());
    EXPECT_EQ(board.name, "start");
}

TEST_F(EditHistoryTest, theSixtyFirstStepDropsTheOldest) {
    for (int step = 1; step <= 61; ++step) {
        edit(std::to_string(step));
        wait(1);
    }
    int steps = 0;
    while (undo()) {
        ++steps;
    }
    EXPECT_EQ(steps, 60);
    EXPECT_EQ(board.name, "1");
}

TEST_F(EditHistoryTest, redoGoesForthAgainAndUndoBackOnceMore) {
    edit("one");
    wait(1);
    edit("two");
    undo();
    undo();
    ASSERT_TRUE(redo());
    EXPECT_EQ(board.name, "one");
    ASSERT_TRUE(redo());
    EXPECT_EQ(board.name, "two");
    EXPECT_FALSE(redo());
    ASSERT_TRUE(undo());
    EXPECT_EQ(board.name, "one");
}

TEST_F(EditHistoryTest, anEditEndsWhatCouldBeRedone) {
    edit("one");
    wait(1);
    edit("two");
    wait(1);
    undo();
    edit("other");
    EXPECT_FALSE(redo());
    ASSERT_TRUE(undo());
    EXPECT_EQ(board.name, "one");
}

} // namespace
} // namespace vornic
