#include "Vornic/library/BoardStore.h"

#include "Vornic/library/FolderLock.h"
#include "VornicCore/board/BoardJson.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallDisk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace vornic {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

class BoardStoreTest : public ::testing::Test {
  protected:
    BoardStoreTest() {
        writeClickPack(scratch / "Packs");
        packs = SoundPack::all(scratch / "Packs");
    }

    BoardStore open() const { return {packs, folder()}; }
    std::filesystem::path folder() const { return scratch / "data/Boards"; }
    std::filesystem::path fileOf(const Board& board) const {
        return folder() / (board.id + ".json");
    }

    ScratchFolder scratch;
    std::vector<SoundPack> packs;
};

TEST_F(BoardStoreTest, offersTheBuiltInBoardsBeforeThereIsAnyOther) {
    const BoardStore store = open();
    ASSERT_EQ(store.builtIn().size(), 1U);
    EXPECT_TRUE(store.builtIn().front().builtIn);
    EXPECT_THAT(store.mine(), IsEmpty());
    EXPECT_THAT(store.problems(), IsEmpty());
    ASSERT_NE(store.board("spring"), nullptr);
    EXPECT_EQ(store.board("spring")->name, "Buckling Spring");
    EXPECT_EQ(store.board("none"), nullptr);
}

TEST_F(BoardStoreTest, aCopyIsTheUsersAndThereAtTheNextStart) {
    BoardStore store = open();
    const Board copy = store.copy(store.builtIn().front(), std::nullopt);
    EXPECT_THAT(copy.id, MatchesRegex("mine-[0-9A-F]{8}"));
    EXPECT_EQ(copy.name, "Buckling Spring (mine)");
    EXPECT_FALSE(copy.builtIn);
    EXPECT_EQ(copy.sounds, store.builtIn().front().sounds);
    EXPECT_EQ(open().mine(), std::vector<Board>{copy});
    EXPECT_EQ(store.copy(copy, "Evening").name, "Evening");
    EXPECT_EQ(open().mine().size(), 2U);
}

TEST_F(BoardStoreTest, savingReplacesTheBoardWithThatIdAndKeepsItsPlace) {
    BoardStore store = open();
    Board first = store.copy(store.builtIn().front(), "First");
    store.copy(store.builtIn().front(), "Second");
    first.name = "Changed";
    EXPECT_FALSE(store.save(first));
    ASSERT_EQ(store.mine().size(), 2U);
    EXPECT_EQ(store.mine().front().name, "Changed");
    EXPECT_EQ(decodeBoard(readBytes(fileOf(first))), first);
}

TEST_F(BoardStoreTest, theFileIsWrittenForPeopleToRead) {
    BoardStore store = open();
    const Board copy = store.copy(store.builtIn().front(), "First");
    EXPECT_THAT(readBytes(fileOf(copy)),
                HasSubstr("\n  \"builtIn\": false,\n  \"character\": {\n"));
}

TEST_F(BoardStoreTest, anotherEndingIsNoBoard) {
    BoardStore store = open();
    const Board copy = store.copy(store.builtIn().front(), "First");
    std::filesystem::rename(fileOf(copy), folder() / (copy.id + ".json.bak"));
    EXPECT_THAT(open().mine(), IsEmpty());
    EXPECT_THAT(open().problems(), IsEmpty());
}

TEST_F(BoardStoreTest, removingTakesTheFileToo) {
    BoardStore store = open();
    const Board copy = store.copy(store.builtIn().front(), "First");
    EXPECT_FALSE(store.remove(copy.id));
    EXPECT_THAT(store.mine(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(fileOf(copy)));
    EXPECT_FALSE(store.remove("spring"));
    EXPECT_EQ(store.builtIn().size(), 1U);
}

TEST_F(BoardStoreTest, aBoardOfTheUsersHidesABuiltInOneOfTheSameId) {
    Board mine = open().builtIn().front();
    mine.builtIn = false;
    mine.name = "My spring";
    scratch.write("data/Boards/spring.json", encodeBoard(mine));
    const BoardStore store = open();
    EXPECT_EQ(store.board("spring")->name, "My spring");
    EXPECT_EQ(store.all(), store.mine());
}

TEST_F(BoardStoreTest, aDamagedFileIsNamedLeftAloneAndHidesNoOther) {
    BoardStore store = open();
    const Board copy = store.copy(store.builtIn().front(), "First");
    scratch.write("data/Boards/half.json", "{\"id\": \"half\", ");
    const BoardStore again = open();
    EXPECT_EQ(again.mine(), std::vector<Board>{copy});
    EXPECT_THAT(again.problems(), ElementsAre(HasSubstr((folder() / "half.json").string())));
    EXPECT_EQ(readBytes(folder() / "half.json"), "{\"id\": \"half\", ");
}

TEST_F(BoardStoreTest, noTextOfAFileDecidesWhereItIsWritten) {
    Board evil = open().builtIn().front();
    evil.id = "../../evil";
    scratch.write("data/Boards/harmless.json", encodeBoard(evil));
    BoardStore store = open();
    ASSERT_EQ(store.mine().size(), 1U);
    EXPECT_EQ(store.mine().front().id, "harmless");
    // It also claimed to be built in, and then no edit could ever be kept.
    EXPECT_FALSE(store.mine().front().builtIn);
    evil.builtIn = false;
    EXPECT_EQ(store.save(evil), std::errc::invalid_argument);
    EXPECT_FALSE(std::filesystem::exists(scratch / "evil.json"));
}

TEST_F(BoardStoreTest, whatANewerVersionHasPutIntoABoardStaysThroughEditsAndCopies) {
    using nlohmann::json;
    Board mine = open().builtIn().front();
    json document = json::parse(encodeBoard(mine));
    document["later"] = {{"deep", {1, 2}}};
    document["sounds"][0]["press"]["chain"]["later"] = 3;
    scratch.write("data/Boards/mine-1.json", document.dump());
    BoardStore store = open();
    Board changed = *store.board("mine-1");
    EXPECT_EQ(changed.sounds, mine.sounds) << "it takes no part in what boards are";
    changed.name = "Changed";
    ASSERT_FALSE(store.save(changed));
    const Board copy = store.copy(changed, "Copy");
    for (const std::string& id : {changed.id, copy.id}) {
        const json written = json::parse(readBytes(folder() / (id + ".json")));
        EXPECT_EQ(written["later"], document["later"]);
        EXPECT_EQ(written["sounds"][0]["press"]["chain"]["later"], 3);
    }
    EXPECT_EQ(open().board("mine-1")->name, "Changed");
}

TEST_F(BoardStoreTest, builtInBoardsAreNeverWritten) {
    BoardStore store = open();
    EXPECT_EQ(store.save(store.builtIn().front()), std::errc::invalid_argument);
    EXPECT_FALSE(std::filesystem::exists(folder()));
}

TEST_F(BoardStoreTest, aFullDiskIsReportedAndLosesNothing) {
    BoardStore store = open();
    Board board = store.copy(store.builtIn().front(), "Before");
    board.name = "After";
    {
        const SmallDisk disk(100);
        EXPECT_EQ(store.save(board), std::errc::file_too_large);
    }
    EXPECT_EQ(store.mine().front().name, "After");
    EXPECT_EQ(open().mine().front().name, "Before");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder()), {}), 1);
    EXPECT_FALSE(store.save(board));
    EXPECT_EQ(open().mine().front().name, "After");
}

TEST_F(BoardStoreTest, aFolderThatCannotBeMadeIsReported) {
    scratch.write("data", "a file where the folder should be");
    BoardStore store = open();
    std::error_code error;
    const Board copy = store.copy(store.builtIn().front(), "First", &error);
    EXPECT_EQ(error, std::errc::not_a_directory);
    EXPECT_EQ(store.mine(), std::vector<Board>{copy});
}

TEST_F(BoardStoreTest, aBoardWhoseFileStaysIsNotGone) {
    BoardStore store = open();
    const Board copy = store.copy(store.builtIn().front(), "First");
    // A folder with something in it cannot be removed like a file.
    std::filesystem::remove(fileOf(copy));
    scratch.write("data/Boards/" + copy.id + ".json/inside", "");
    EXPECT_TRUE(store.remove(copy.id));
    EXPECT_EQ(store.mine().size(), 1U);
}

TEST_F(BoardStoreTest, sweepsUpWhatAWriteThatWasCutShortHasLeft) {
    const std::string left = ".mine-1.json.123-0.part";
    scratch.write("data/Boards/" + left, "{");
    scratch.write("data/Boards/notes.part", "the user's");
    scratch.write("data/Boards/.mine.notes.part", "the user's");
    {
        const FolderLock writing(folder());
        open();
        EXPECT_TRUE(std::filesystem::exists(folder() / left)) << "somebody is writing it just now";
    }
    EXPECT_THAT(open().problems(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder() / left));
    EXPECT_TRUE(std::filesystem::exists(folder() / "notes.part"));
    EXPECT_TRUE(std::filesystem::exists(folder() / ".mine.notes.part"));
}

TEST_F(BoardStoreTest, nobodyElseCanReadTheUsersBoards) {
    using std::filesystem::perms;
    const auto rights = [](const std::filesystem::path& path) {
        return std::filesystem::status(path).permissions();
    };
    const mode_t former = umask(0);
    const Board copy = open().copy(open().builtIn().front(), "First");
    umask(former);
    EXPECT_EQ(rights(folder()), perms::owner_all);
    EXPECT_EQ(rights(fileOf(copy)), perms::owner_read | perms::owner_write);
    // One from before is narrowed.
    std::filesystem::permissions(fileOf(copy), perms::all);
    open();
    EXPECT_EQ(rights(fileOf(copy)), perms::owner_all);
}

} // namespace
} // namespace vornic
