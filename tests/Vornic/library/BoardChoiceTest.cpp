#include "Vornic/library/BoardChoice.h"

#include "Vornic/library/BoardTransfer.h"
#include "VornicCore/board/BoardJson.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace vornic {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class BoardChoiceTest : public testing::Test {
  protected:
    Board choose(const std::optional<std::string>& wanted) {
        return chooseBoard(wanted, store_, library_);
    }

    std::string refusal(const std::string& wanted) {
        try {
            choose(wanted);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return {};
    }

    static const Board& mine() {
        static const Board board = made();
        return board;
    }

    static Board made() {
        Board board("mine-1", "Mine", "A board", "#123456", BuildParts{}, {}, {});
        SoundSpec sound;
        sound.id = "keys";
        sound.press.layers = {LayerSpec(LayerPart::click, {"user/aaaaaaaa"}, 0, 0, 0)};
        board.sounds = {sound};
        return board;
    }

    std::string boardFile() {
        library_.addUser("a", LayerPart::click, "user/aaaaaaaa", {0.5F, 0.5F});
        exportBoard(mine(), library_, scratch_ / "mine.vornic");
        library_.removeUser("user/aaaaaaaa");
        return (scratch_ / "mine.vornic").string();
    }

    ScratchFolder scratch_;
    std::vector<SoundPack> packs() const { return SoundPack::all(scratch_ / "packs"); }
    BoardStore store_{(writeClickPack(scratch_ / "packs"), packs()), scratch_ / "Boards"};
    SampleLibrary library_{packs()};
};

TEST_F(BoardChoiceTest, findsBuiltInBoardsAndTheUsersById) {
    EXPECT_EQ(choose("spring").name, "Buckling Spring");
    ASSERT_FALSE(store_.save(mine()));
    EXPECT_EQ(choose("mine-1"), mine());
}

TEST_F(BoardChoiceTest, withoutAWishItIsTheFirstWhereTheDefaultIsMissing) {
    EXPECT_EQ(choose(std::nullopt).id, "spring");
}

TEST_F(BoardChoiceTest, opensABoardFileWithItsRecordings) {
    const Board board = choose(boardFile());
    EXPECT_EQ(board.name, "Mine");
    const auto samples = library_.samples(board.sounds[0].press.layers[0].samples[0]);
    ASSERT_TRUE(samples);
    EXPECT_EQ(samples->size(), 2U);
}

TEST_F(BoardChoiceTest, opensABoardFileByAnyName) {
    std::filesystem::rename(boardFile(), scratch_ / "mine.txt");
    const Board board = choose((scratch_ / "mine.txt").string());
    EXPECT_TRUE(library_.samples(board.sounds[0].press.layers[0].samples[0]));
}

TEST_F(BoardChoiceTest, opensTheJsonOfABoard) {
    EXPECT_EQ(choose(scratch_.write("b.json", encodeBoard(mine())).string()), mine());
}

TEST_F(BoardChoiceTest, namesThePlaceInADocumentThatIsNoBoard) {
    std::string text = encodeBoard(mine());
    text.replace(text.find("\"A board\""), 9, "7");
    const std::string file = scratch_.write("b.json", text).string();
    EXPECT_EQ(refusal(file), file + " is no board: detail: expected a string, found a number");
    const std::string other = scratch_.write("b.vornic", "{}").string();
    EXPECT_EQ(refusal(other), other + " is no board: format: missing");
    const std::string broken = scratch_.write("c", R"({"format": "vornic-board"})").string();
    EXPECT_EQ(refusal(broken), broken + " is no board: version: missing");
}

TEST_F(BoardChoiceTest, saysWhichBoardsThereAre) {
    EXPECT_EQ(refusal("nonsense"), "There is no board and no file \"nonsense\". Boards: spring.");
    const BoardStore none({}, scratch_ / "None");
    EXPECT_THAT([&] { chooseBoard(std::nullopt, none, library_); },
                testing::ThrowsMessage<std::runtime_error>(HasSubstr("No sound pack was found")));
}

} // namespace
} // namespace vornic
