#include "Vornic/app/BoardEditor.h"

#include "VornicCore/board/BoardJson.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class BoardEditorTest : public ::testing::Test {
  protected:
    using Change = BoardEditor::Change;

    BoardEditorTest() {
        writeClickPack(scratch / "Packs");
        store.emplace(SoundPack::all(scratch / "Packs"), scratch / "Boards");
        editor.emplace(*store, clock, TweaksByBoard());
        editor->onChange = [this](Change change) { changes.push_back(change); };
        editor->onError = [this](const std::string& message) { errors.push_back(message); };
        editor->select("spring");
        changes.clear();
    }

    void setRattle(double rattle) {
        editor->edit([&](Board& board) { board.stabs.rattle = rattle; });
    }
    double rattle() const { return editor->board()->stabs.rattle; }
    Board stored(const std::string& id) const {
        return decodeBoard(readBytes(scratch / ("Boards/" + id + ".json")));
    }

    ScratchFolder scratch;
    ManualClock clock;
    std::optional<BoardStore> store;
    std::optional<BoardEditor> editor;
    std::vector<Change> changes;
    std::vector<std::string> errors;
};

TEST_F(BoardEditorTest, theFirstEditOfABuiltInBoardMakesExactlyOneCopy) {
    const Board original = *editor->board();
    setRattle(0.5);
    EXPECT_EQ(editor->board()->name, "Buckling Spring (mine)");
    EXPECT_THAT(editor->board()->id, StartsWith("mine-"));
    EXPECT_FALSE(editor->board()->builtIn);
    setRattle(0.6);
    clock.advance(1);
    setRattle(0.7);
    ASSERT_EQ(store->mine().size(), 1U);
    EXPECT_EQ(store->mine().front(), *editor->board());
    EXPECT_EQ(stored(editor->board()->id), *editor->board());
    EXPECT_EQ(*store->board("spring"), original);
    EXPECT_THAT(changes, ElementsAre(Change::edited, Change::edited, Change::edited));
}

TEST_F(BoardEditorTest, anEditThatChangesNothingMakesNoCopyAndNoStep) {
    EXPECT_FALSE(editor->edit([](Board&) {}));
    EXPECT_EQ(editor->board()->id, "spring");
    EXPECT_THAT(store->mine(), IsEmpty());
    EXPECT_FALSE(editor->canUndo());
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(BoardEditorTest, theCopyIsWhatUndoingTheFirstEditRestores) {
    const Board original = *editor->board();
    setRattle(0.5);
    const std::string id = editor->board()->id;
    ASSERT_TRUE(editor->undo());
    EXPECT_EQ(editor->board()->id, id);
    EXPECT_EQ(rattle(), original.stabs.rattle);
    EXPECT_EQ(stored(id), *editor->board());
    EXPECT_FALSE(editor->canUndo());
    EXPECT_EQ(changes.back(), Change::stepped);
}

TEST_F(BoardEditorTest, undoAndRedoAreSavedLikeEdits) {
    setRattle(0.5);
    clock.advance(1);
    setRattle(0.6);
    const std::string id = editor->board()->id;
    ASSERT_TRUE(editor->undo());
    EXPECT_EQ(stored(id).stabs.rattle, 0.5);
    ASSERT_TRUE(editor->canRedo());
    ASSERT_TRUE(editor->redo());
    EXPECT_EQ(stored(id).stabs.rattle, 0.6);
    EXPECT_FALSE(editor->redo());
}

TEST_F(BoardEditorTest, editsWithinTheTimeOfADragAreOneStep) {
    const double before = rattle();
    for (int step = 1; step <= 10; ++step) {
        setRattle(step / 20.0);
        clock.advance(0.1);
    }
    ASSERT_TRUE(editor->undo());
    EXPECT_EQ(rattle(), before);
    EXPECT_FALSE(editor->canUndo());
}

TEST_F(BoardEditorTest, eachBoardHasItsOwnSteps) {
    setRattle(0.5);
    const std::string first = editor->board()->id;
    editor->newBoard();
    EXPECT_FALSE(editor->canUndo());
    EXPECT_FALSE(editor->undo());
    editor->select(first);
    EXPECT_TRUE(editor->canUndo());
}

TEST_F(BoardEditorTest, anEditChangesNeitherTheIdNorWhoseTheBoardIs) {
    setRattle(0.5);
    const std::string id = editor->board()->id;
    editor->edit([](Board& board) {
        board.id = "../escaped";
        board.builtIn = true;
        board.detail = "changed";
    });
    EXPECT_EQ(editor->board()->id, id);
    EXPECT_FALSE(editor->board()->builtIn);
    EXPECT_EQ(editor->board()->detail, "changed");
}

TEST_F(BoardEditorTest, aNewBoardIsACopyAndCurrent) {
    const Board original = *editor->board();
    editor->newBoard();
    EXPECT_EQ(editor->board()->name, "New board");
    EXPECT_EQ(editor->board()->sounds, original.sounds);
    EXPECT_EQ(stored(editor->board()->id), *editor->board());
    EXPECT_THAT(changes, ElementsAre(Change::selected));
}

TEST_F(BoardEditorTest, renamingABuiltInBoardNamesItsCopy) {
    editor->renameBoard("Evening");
    EXPECT_EQ(editor->board()->name, "Evening");
    EXPECT_EQ(store->board("spring")->name, "Buckling Spring");
    EXPECT_TRUE(editor->undo());
    EXPECT_EQ(editor->board()->name, "Buckling Spring (mine)");
}

TEST_F(BoardEditorTest, deletingTheCurrentBoardMakesANeighbourCurrent) {
    editor->newBoard();
    editor->renameBoard("One");
    const std::string one = editor->board()->id;
    editor->newBoard();
    const std::string two = editor->board()->id;
    changes.clear();
    editor->deleteBoard();
    EXPECT_EQ(editor->board()->id, one);
    EXPECT_EQ(store->board(two), nullptr);
    EXPECT_FALSE(std::filesystem::exists(scratch / ("Boards/" + two + ".json")));
    editor->deleteBoard();
    EXPECT_EQ(editor->board()->id, "spring");
    EXPECT_THAT(changes, ElementsAre(Change::selected, Change::selected));
}

TEST_F(BoardEditorTest, builtInBoardsCannotBeDeleted) {
    editor->deleteBoard();
    EXPECT_EQ(editor->board()->id, "spring");
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(BoardEditorTest, theLastBoardOfAllLeavesNone) {
    store.emplace(std::vector<SoundPack>(), scratch / "Boards");
    Board only;
    only.id = "only";
    ASSERT_FALSE(store->save(only));
    editor->select("only");
    editor->deleteBoard();
    EXPECT_EQ(editor->board(), nullptr);
    EXPECT_FALSE(editor->edit([](Board& board) { board.name = "x"; }));
    EXPECT_FALSE(editor->undo());
    editor->newBoard();
    EXPECT_EQ(editor->board(), nullptr);
}

TEST_F(BoardEditorTest, adjustmentsBelongToTheirBoardAndLeaveItAsItIs) {
    const Board original = *editor->board();
    editor->setTweaks({.deeper = 0.5});
    EXPECT_EQ(*editor->board(), original);
    EXPECT_EQ(editor->heardBoard().character.depth, 0.5);
    EXPECT_THAT(changes, ElementsAre(Change::tweaked));
    editor->newBoard();
    const std::string mine = editor->board()->id;
    EXPECT_EQ(editor->tweaks().deeper, 0.5) << "a copy sounds like the original";
    editor->setTweaks({.deeper = -1});
    editor->select("spring");
    EXPECT_EQ(editor->tweaks().deeper, 0.5);
    EXPECT_EQ(editor->allTweaks(),
              (TweaksByBoard{{"spring", {.deeper = 0.5}}, {mine, {.deeper = -1}}}));
    editor->setTweaks({});
    EXPECT_EQ(editor->allTweaks(), (TweaksByBoard{{mine, {.deeper = -1}}}));
}

TEST_F(BoardEditorTest, theCopyThatAnEditMakesKeepsTheAdjustments) {
    editor->setTweaks({.crisper = 1});
    setRattle(0.5);
    EXPECT_EQ(editor->tweaks().crisper, 1);
    EXPECT_EQ(editor->allTweaks().at("spring").crisper, 1);
    EXPECT_EQ(editor->allTweaks().at(editor->board()->id).crisper, 1);
    editor->deleteBoard();
    EXPECT_EQ(editor->allTweaks().size(), 1U);
}

TEST_F(BoardEditorTest, aBoardFromElsewhereIsNeverTakenForOneOfTheStores) {
    editor->newBoard();
    Board guest = *editor->board();
    guest.name = "Guest";
    const Board mine = *editor->board();
    editor->selectGuest(guest);
    setRattle(0.9);
    EXPECT_EQ(editor->board()->name, "Guest (mine)");
    EXPECT_EQ(*store->board(mine.id), mine);
    EXPECT_EQ(store->mine().size(), 2U);
}

TEST_F(BoardEditorTest, aFullDiskGivesAMessageAndTheEditCounts) {
    editor->newBoard();
    const std::string id = editor->board()->id;
    const double before = rattle();
    {
        const SmallDisk disk(100);
        setRattle(0.5);
    }
    EXPECT_THAT(errors, ElementsAre("Couldn't save the board: File too large"));
    EXPECT_EQ(rattle(), 0.5);
    EXPECT_EQ(stored(id).stabs.rattle, before);
    clock.advance(1);
    setRattle(0.6);
    EXPECT_EQ(stored(id).stabs.rattle, 0.6);
}

TEST_F(BoardEditorTest, aBoardThatCannotBeDeletedStays) {
    editor->newBoard();
    const std::string id = editor->board()->id;
    std::filesystem::remove(scratch / ("Boards/" + id + ".json"));
    scratch.write("Boards/" + id + ".json/inside", "");
    editor->deleteBoard();
    EXPECT_EQ(editor->board()->id, id);
    EXPECT_THAT(errors, ElementsAre(HasSubstr("Couldn't delete the board: ")));
}

} // namespace
} // namespace vornic
