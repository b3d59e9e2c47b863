#include "Vornic/library/BoardTransfer.h"

#include "VornicCore/board/BoardJson.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::StartsWith;

const std::vector<float> sound{0.5F, -0.25F, 0, 0.125F};

SoundSpec soundWith(const std::string& id, const std::vector<std::string>& samples) {
    SoundSpec spec;
    spec.id = id;
    spec.press.layers = {LayerSpec(LayerPart::click, samples, 0, 0, 0)};
    return spec;
}

/// The folders of one user.
class User {
  public:
    User() { writeClickPack(scratch_ / "packs"); }

    BoardStore store() { return {packs(), scratch_ / "Boards"}; }
    SampleLibrary library() { return SampleLibrary(packs(), scratch_ / "Samples"); }
    std::vector<SoundPack> packs() const { return SoundPack::all(scratch_ / "packs"); }
    fs::path operator/(const std::string& name) const { return scratch_ / name; }
    fs::path write(const std::string& name, const std::string& text) const {
        return scratch_.write(name, text);
    }

    /// The names of all files of this user's own.
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const char* const folder : {"Boards", "Samples"}) {
            std::error_code error;
            for (const auto& entry : fs::directory_iterator(scratch_ / folder, error)) {
                names.push_back(entry.path().filename());
            }
        }
        return names;
    }

  private:
    ScratchFolder scratch_;
};

Board mixedBoard(const std::vector<std::string>& samples) {
    Board board("mine-1", "Mine", "A board", "#123456", BuildParts{}, {}, {});
    board.sounds = {soundWith("keys", samples)};
    board.sounds[0].release = StrokeSpec({LayerSpec(LayerPart::topOut, samples, 0, 0, 0)});
    return board;
}

std::string importError(User& user, const fs::path& file) {
    BoardStore store = user.store();
    SampleLibrary library = user.library();
    try {
        importBoard(readBoardFile(file), store, library);
    } catch (const BoardTransferError& error) {
        EXPECT_THAT(user.files(), IsEmpty());
        return error.whole();
    }
    return {};
}

TEST(BoardTransfer, embedsTheUsersSamplesThatTheBoardUsesAndNoOthers) {
    User user;
    SampleLibrary library = user.library();
    library.addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    library.addUser("b", LayerPart::click, "user/bbbbbbbb", sound);
    library.addUser("c", LayerPart::click, "user/cccccccc", sound);
    const Board board = mixedBoard(
        {"user/cccccccc", "spring/regular-01", "part/spring", "user/aaaaaaaa", "user/gone"});
    EXPECT_THAT(usersSamplesOf(board, library), ElementsAre("user/cccccccc", "user/aaaaaaaa"));
    exportBoard(board, library, user / "out.vornic");
    const auto contents = BoardFile::decode(readBytes(user / "out.vornic"));
    EXPECT_EQ(contents.board, board);
    EXPECT_THAT(contents.samples, SizeIs(2));
}

TEST(BoardTransfer, whatANewerVersionHasPutIntoABoardTravelsThroughFiles) {
    using nlohmann::json;
    User from;
    SampleLibrary theirs = from.library();
    exportBoard(mixedBoard({"spring/regular-01"}), theirs, from / "out.vornic");
    json document = json::parse(readBytes(from / "out.vornic"));
    document["board"]["later"] = "kept";
    document["board"]["sounds"][0]["press"]["layers"][0]["later"] = 5;
    User to;
    BoardStore store = to.store();
    SampleLibrary library = to.library();
    const Board got =
        importBoard(readBoardFile(from.write("new.vornic", document.dump())), store, library);
    exportBoard(got, library, to / "again.vornic", store.unknown(got.id));
    const json again = json::parse(readBytes(to / "again.vornic"));
    EXPECT_EQ(again["board"]["later"], "kept");
    EXPECT_EQ(again["board"]["sounds"][0]["press"]["layers"][0]["later"], 5);
    EXPECT_EQ(to.store().unknown(got.id).empty(), false) << "it is in the board's file";
}

TEST(BoardTransfer, anImportedBoardSoundsTheSameUnderFreshIds) {
    User from;
    SampleLibrary theirs = from.library();
    theirs.addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    Board sent = mixedBoard({"user/aaaaaaaa", "spring/regular-01"});
    sent.builtIn = true;
    exportBoard(sent, theirs, from / "out.vornic");

    User to;
    BoardStore store = to.store();
    SampleLibrary library = to.library();
    const std::vector<float> own{0.1F, 0.1F};
    library.addUser("mine", LayerPart::click, "user/aaaaaaaa", own);
    const Board got = importBoard(readBoardFile(from / "out.vornic"), store, library);

    EXPECT_THAT(got.id, MatchesRegex("mine-[0-9A-F]{8}"));
    EXPECT_FALSE(got.builtIn);
    ASSERT_THAT(got.sounds, SizeIs(1));
    const auto& samples = got.sounds[0].press.layers[0].samples;
    ASSERT_THAT(samples, SizeIs(2));
    EXPECT_THAT(samples[0], MatchesRegex("user/[0-9A-F]{8}"));
    EXPECT_NE(samples[0], "user/aaaaaaaa");
    EXPECT_EQ(samples[1], "spring/regular-01");
    EXPECT_EQ(got.sounds[0].release->layers[0].samples, samples) << "releases are rewritten too";
    EXPECT_EQ(library.samples("user/aaaaaaaa"), own) << "what was there stays";
    const auto received = library.samples(samples[0]);
    ASSERT_TRUE(received);
    EXPECT_EQ(BoardFile::pcm16(*received), BoardFile::pcm16(sound));

    Board expected = sent;
    expected.id = got.id;
    expected.builtIn = false;
    expected.sounds[0].press.layers[0].samples = samples;
    expected.sounds[0].release->layers[0].samples = samples;
    EXPECT_EQ(got, expected) << "nothing else changes";

    const BoardStore later = to.store();
    ASSERT_NE(later.board(got.id), nullptr);
    EXPECT_EQ(*later.board(got.id), got);
    const SampleLibrary laterLibrary = to.library();
    EXPECT_TRUE(laterLibrary.samples(samples[0]));
    EXPECT_THAT(
        laterLibrary.userSamples(),
        testing::Contains(SampleInfo{samples[0], "Mine 1", LayerPart::click, "Yours", false}));
}

TEST(BoardTransfer, importingTwiceMakesTwoBoards) {
    User user;
    BoardStore store = user.store();
    SampleLibrary library = user.library();
    exportBoard(mixedBoard({}), library, user / "out.vornic");
    const Board one = importBoard(readBoardFile(user / "out.vornic"), store, library);
    const Board other = importBoard(readBoardFile(user / "out.vornic"), store, library);
    EXPECT_NE(one.id, other.id);
    EXPECT_THAT(user.store().mine(), SizeIs(2));
}

TEST(BoardTransfer, nothingThatAFileSaysBecomesAPath) {
    const std::string evil = "../../../evil";
    User from;
    SampleLibrary theirs({});
    theirs.addUser("a", LayerPart::click, evil, sound);
    theirs.addUser("b", LayerPart::click, "spring/regular-01", {0.9F, 0.9F});
    Board sent = mixedBoard({evil, "spring/regular-01"});
    sent.id = evil;
    sent.name = evil;
    exportBoard(sent, theirs, from / "out.vornic");

    User to;
    BoardStore store = to.store();
    SampleLibrary library = to.library();
    const auto pack = library.samples("spring/regular-01");
    const Board got = importBoard(readBoardFile(from / "out.vornic"), store, library);
    for (const std::string& id : got.sounds[0].press.layers[0].samples) {
        EXPECT_THAT(id, MatchesRegex("user/[0-9A-F]{8}"));
    }
    EXPECT_EQ(library.samples("spring/regular-01"), pack) << "a pack is not replaced";
    EXPECT_THAT(to.files(), testing::UnorderedElementsAre(got.id + ".json", "index.json",
                                                          MatchesRegex("user_[0-9A-F]{8}.wav"),
                                                          MatchesRegex("user_[0-9A-F]{8}.wav")));
}

TEST(BoardTransfer, samplesThatNoLayerNamesAreAddedTooAndSilentOnesAreNot) {
    User user;
    SampleLibrary theirs({});
    theirs.addUser("a", LayerPart::click, "a", sound);
    theirs.addUser("b", LayerPart::click, "b", {});
    const std::string text =
        BoardFile::encode(mixedBoard({"c"}), std::vector<std::string>{"a", "b"}, theirs);
    const fs::path file = user.write("out.vornic", text);
    BoardStore store = user.store();
    SampleLibrary library = user.library();
    const Board got = importBoard(readBoardFile(file), store, library);
    EXPECT_THAT(got.sounds[0].press.layers[0].samples, ElementsAre("c"));
    const auto infos = user.library().userSamples();
    EXPECT_THAT(infos, testing::Contains(testing::Field(&SampleInfo::name, "Mine 1")));
    EXPECT_THAT(infos,
                testing::Not(testing::Contains(testing::Field(&SampleInfo::name, "Mine 2"))));
}

TEST(BoardTransfer, aFileThatCannotBeReadIsCalledSo) {
    User user;
    EXPECT_EQ(importError(user, user / "missing.vornic"),
              "Couldn't read that file. Couldn't read " + (user / "missing.vornic").string() +
                  ": No such file or directory");
    const fs::path huge = user.write("huge.vornic", "");
    fs::resize_file(huge, std::uintmax_t{2} << 30U);
    EXPECT_THAT(importError(user, huge), StartsWith("Couldn't read that file."));
}

TEST(BoardTransfer, aFileThatIsNoBoardFileIsCalledSoWithThePlace) {
    User user;
    EXPECT_EQ(importError(user, user.write("a.vornic", "{}")), "That isn't a Vornic board file. " +
                                                                   (user / "a.vornic").string() +
                                                                   ", format: missing");
    const std::string board = encodeBoard(mixedBoard({}));
    EXPECT_THAT(importError(user, user.write("b.vornic", board)),
                StartsWith("That isn't a Vornic board file."))
        << "a board alone is another format";
}

TEST(BoardTransfer, aFileWithTooManyRecordingsIsRefused) {
    User user;
    std::string samples;
    for (std::size_t number = 0; number <= mostImportedSamples; ++number) {
        samples += (number > 0 ? ",\"" : "\"") + std::to_string(number) + "\":\"AAAA\"";
    }
    const fs::path file = user.write(
        "a.vornic", R"({"format": "vornic-board", "version": 1, "board": )" +
                        encodeBoard(mixedBoard({})) + R"(, "samples": {)" + samples + "}}");
    EXPECT_THAT(importError(user, file), EndsWith("samples: more than 2000"));
}

TEST(BoardTransfer, whenTheSamplesCannotBeKeptTheBoardIsNot) {
    User user;
    SampleLibrary theirs({});
    theirs.addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    exportBoard(mixedBoard({"user/aaaaaaaa"}), theirs, user / "out.vornic");
    fs::create_directories(user / "Samples/index.json"); // Nothing can be listed.
    BoardStore store = user.store();
    SampleLibrary library = user.library();
    EXPECT_THROW(importBoard(readBoardFile(user / "out.vornic"), store, library),
                 BoardTransferError);
    EXPECT_THAT(user.files(), ElementsAre("index.json"));
    EXPECT_THAT(store.mine(), IsEmpty());
}

TEST(BoardTransfer, whenTheBoardCannotBeKeptItsSamplesAreNot) {
    User user;
    SampleLibrary theirs({});
    theirs.addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    exportBoard(mixedBoard({"user/aaaaaaaa"}), theirs, user / "out.vornic");
    BoardStore store = user.store();
    user.write("Boards", "a file where the folder should be");
    SampleLibrary library = user.library();
    try {
        importBoard(readBoardFile(user / "out.vornic"), store, library);
        ADD_FAILURE();
    } catch (const BoardTransferError& error) {
        EXPECT_THAT(error.what(), StartsWith("Couldn't save the board: "));
    }
    EXPECT_THAT(user.files(), ElementsAre("index.json"));
    EXPECT_THAT(user.library().userSamples(),
                testing::Not(testing::Contains(testing::Field(&SampleInfo::builtIn, false))));
}

TEST(BoardTransfer, aFailedExportSaysWhyAndLeavesNothing) {
    User user;
    const SampleLibrary library = user.library();
    try {
        exportBoard(mixedBoard({}), library, user / "missing/out.vornic");
        ADD_FAILURE();
    } catch (const BoardTransferError& error) {
        EXPECT_STREQ(error.what(), "Couldn't save the board: No such file or directory");
        EXPECT_THAT(error.detail(), HasSubstr("missing/out.vornic"));
    }
    Board unwritable = mixedBoard({});
    unwritable.stabs.rattle = std::numeric_limits<double>::quiet_NaN();
    try {
        exportBoard(unwritable, library, user / "out.vornic");
        ADD_FAILURE();
    } catch (const BoardTransferError& error) {
        EXPECT_THAT(error.what(), StartsWith("Couldn't save the board: board.stabs.rattle: "));
    }
    EXPECT_FALSE(fs::exists(user / "out.vornic"));
}

TEST(BoardTransfer, anOpenedBoardLeavesNoTrace) {
    User user;
    SampleLibrary library = user.library();
    BoardFile::Contents contents;
    contents.board = mixedBoard({"user/aaaaaaaa"});
    contents.samples["user/aaaaaaaa"] = sound;
    const Board board = openBoard(readContents(std::move(contents)), library).board;
    EXPECT_EQ(board.id, "mine-1");
    EXPECT_EQ(library.samples(board.sounds[0].press.layers[0].samples[0]), sound);
    EXPECT_THAT(user.files(), IsEmpty());
    EXPECT_THAT(usersSamplesOf(board, library), SizeIs(1)) << "so it can be exported again";
}

} // namespace
} // namespace vornic
