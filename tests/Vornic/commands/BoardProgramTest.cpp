// The commands about boards, in the real program.

#include "Vornic/library/SampleLibrary.h"
#include "VornicCore/board/BoardFile.h"
#include "VornicCore/board/BoardJson.h"
#include "VornicCore/board/BuiltInBoards.h"
#include "VornicCore/render/BuildBoard.h"
#include "VornicCore/sampler/VoiceBank.h"
#include "tests/live/ChildProcess.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <bit>
#include <cstring>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::SizeIs;
using testing::StartsWith;

struct Result {
    int status = -1;
    std::string output; // of both streams
};

/// The samples of a WAV file of 32-bit floats, mono, at 48 kHz.
std::vector<float> floatsOf(const fs::path& file) {
    const std::string bytes = readBytes(file);
    constexpr std::size_t header = 58;
    EXPECT_THAT(bytes, StartsWith("RIFF"));
    EXPECT_EQ(bytes.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(bytes.substr(16, 24),
              std::string("\x12\0\0\0\x03\0\x01\0\x80\xbb\0\0\0\xee\x02\0\x04\0\x20\0\0\0", 22) +
                  "fa");
    EXPECT_EQ(bytes.substr(50, 4), "data");
    if (bytes.size() < header) {
        return {};
    }
    std::vector<float> samples((bytes.size() - header) / sizeof(float));
    std::memcpy(samples.data(), bytes.data() + header, samples.size() * sizeof(float));
    return samples;
}

std::vector<float> framesOf(const Sample& sample) {
    return {sample.data, sample.data + sample.length};
}

class BoardProgramTest : public testing::Test {
  protected:
    BoardProgramTest() { writeClickPack(scratch_ / "packs"); }

    /// Runs the program for the user whose data lies in `data`.
    Result run(std::vector<std::string> arguments, const std::string& data = "data") {
        const fs::path log = scratch_ / ("log" + std::to_string(runs_++));
        arguments.insert(arguments.begin(), VORNIC_PROGRAM);
        arguments.insert(arguments.begin() + 2, {"--packs", (scratch_ / "packs").string()});
        ChildProcess program(arguments, {{"XDG_DATA_HOME", path(data)}}, log.string());
        Result result;
        result.status = program.wait();
        result.output = readBytes(log);
        return result;
    }

    std::string path(const std::string& name) const { return (scratch_ / name).string(); }
    std::vector<SoundPack> packs() const { return SoundPack::all(scratch_ / "packs"); }

    /// A board of the user's, with a recording of the user's and a release.
    Board usersBoard(const std::string& data) {
        SampleLibrary library(packs(), scratch_ / data / "Vornic/Samples");
        std::vector<float> recording(4800);
        for (std::size_t i = 0; i < recording.size(); ++i) {
            recording[i] = static_cast<float>((i * 7919) % 65535) / 32767.0F - 1.0F;
        }
        const SampleInfo info = library.addUser("a", LayerPart::bottomOut, std::nullopt, recording);
        Board board = BuiltInBoards::make(packs()).at(0);
        board.id = "mine-1";
        board.name = "Mine";
        board.builtIn = false;
        board.sounds[0].press.layers[0].samples = {info.id, "spring/regular-01"};
        board.sounds[0].release = board.sounds[0].press;
        scratch_.write(data + "/Vornic/Boards/mine-1.json", encodeBoard(board));
        return board;
    }

    ScratchFolder scratch_;
    int runs_ = 0;
};

TEST_F(BoardProgramTest, listsBuiltInBoardsAndTheUsers) {
    usersBoard("data");
    const Result text = run({"boards"});
    EXPECT_EQ(text.status, 0) << text.output;
    EXPECT_EQ(text.output, "spring  Buckling Spring: A loud spring under every key\n"
                           "mine-1  Mine: A loud spring under every key (yours)\n");
    const json list = json::parse(run({"boards", "--json"}).output);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0]["id"], "spring");
    EXPECT_EQ(list[0]["builtIn"], true);
    EXPECT_EQ(list[0]["sounds"][0], (json{{"id", "keys"},
                                          {"name", "Buckling Spring keys"},
                                          {"variations", 12},
                                          {"release", false}}));
    EXPECT_EQ(list[1]["id"], "mine-1");
    EXPECT_EQ(list[1]["builtIn"], false);
}

TEST_F(BoardProgramTest, aBoardGoesFromOneUserToAnother) {
    const Board sent = usersBoard("one");
    const Result exported = run({"export", "mine-1", path("b.vornic")}, "one");
    ASSERT_EQ(exported.status, 0) << exported.output;
    EXPECT_EQ(exported.output, "");
    const Result imported = run({"import", path("b.vornic")}, "other");
    ASSERT_EQ(imported.status, 0) << imported.output;
    ASSERT_THAT(imported.output, MatchesRegex("Imported \"Mine\" as mine-[0-9A-F]{8}\n"));

    const std::string id = imported.output.substr(19, 13);
    ASSERT_EQ(run({"stroke", "--board", id, "--sound", "keys", "--out", path("other.wav")}, "other")
                  .status,
              0);
    ASSERT_EQ(
        run({"stroke", "--board", path("b.vornic"), "--sound", "keys", "--out", path("file.wav")},
            "nobody")
            .status,
        0);
    EXPECT_FALSE(floatsOf(scratch_ / "other.wav").empty());
    EXPECT_EQ(floatsOf(scratch_ / "other.wav").size(), floatsOf(scratch_ / "file.wav").size());
    EXPECT_EQ(json::parse(run({"boards", "--json"}, "nobody").output).size(), 1U)
        << "a board file that is only played is not kept";
    ASSERT_EQ(run({"export", id, path("again.vornic")}, "other").status, 0);
    const auto first = BoardFile::decode(readBytes(scratch_ / "b.vornic"));
    const auto second = BoardFile::decode(readBytes(scratch_ / "again.vornic"));
    ASSERT_THAT(second.samples, SizeIs(1));
    EXPECT_EQ(second.samples.begin()->second.size(), first.samples.begin()->second.size());
    EXPECT_EQ(second.board.groups, sent.groups);
}

TEST_F(BoardProgramTest, refusesToImportWhatIsNoBoardFileAndNamesThePlace) {
    const std::string file = scratch_.write("b.vornic", R"({"format": 7})").string();
    const Result result = run({"import", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "vornic: That isn't a Vornic board file. " + file +
                                 ", format: expected a string, found a number\n");
    const Result missing = run({"import", path("missing")});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output, "vornic: Couldn't read that file. Couldn't read " + path("missing") +
                                  ": No such file or directory\n");
}

TEST_F(BoardProgramTest, refusesToExportWhatIsNotThereOrWhereItCannot) {
    const Result unknown = run({"export", "nonsense", path("b.vornic")});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.output,
              "vornic: There is no board and no file \"nonsense\". Boards: spring.\n");
    const Result nowhere = run({"export", "spring", path("missing/b.vornic")});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.output, "vornic: Couldn't save the board: No such file or directory (" +
                                  path("missing/b.vornic") + ")\n");
}

TEST_F(BoardProgramTest, aStrokeIsToTheBitWhatTheBankHolds) {
    const Board board = usersBoard("data");
    const SampleLibrary library(packs(), scratch_ / "data/Vornic/Samples");
    const auto bank = buildBoard(board, library, 1).bank;
    const auto other = buildBoard(board, library, 1, {.seed = 7}).bank;
    const auto written = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"stroke", "--board", "mine-1", "--out", path("s.wav")});
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.output;
        return floatsOf(scratch_ / "s.wav");
    };
    const auto held = [](const VoiceBank& from, const std::string& key, std::size_t variant) {
        return framesOf(from.pool(key)[variant]);
    };
    EXPECT_EQ(written({"--sound", "keys", "--velocity", "hard", "--variant", "11"}),
              held(*bank, VoiceBank::key("keys", false, Velocity::hard), 11));
    EXPECT_EQ(written({"--sound", "keys"}),
              held(*bank, VoiceBank::key("keys", false, Velocity::medium), 0));
    EXPECT_EQ(written({"--sound", "space", "--velocity", "soft", "--variant", "3", "--stabilised"}),
              held(*bank, VoiceBank::key("space", true, Velocity::soft), 3));
    EXPECT_EQ(written({"--sound", "keys", "--variant", "5", "--release"}),
              held(*bank, VoiceBank::releaseKey("keys"), 5));
    const auto seeded = written({"--sound", "keys", "--variant", "2", "--seed", "7"});
    EXPECT_EQ(seeded, held(*other, VoiceBank::key("keys", false, Velocity::medium), 2));
    EXPECT_NE(seeded, held(*bank, VoiceBank::key("keys", false, Velocity::medium), 2));
}

TEST_F(BoardProgramTest, saysWhichStrokeIsMissing) {
    const auto refusal = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"stroke", "--board", "spring", "--out", path("s.wav")});
        const Result result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_FALSE(fs::exists(scratch_ / "s.wav"));
        return result.output;
    };
    EXPECT_EQ(refusal({"--sound", "thock"}), "vornic: \"Buckling Spring\" has no sound \"thock\". "
                                             "Sounds: keys, space, enter, back, mods.\n");
    EXPECT_EQ(refusal({"--sound", "keys", "--variant", "12"}),
              "vornic: There is no variation 12: sound \"keys\" of \"Buckling Spring\" has 12, "
              "counted from 0.\n");
    EXPECT_THAT(refusal({"--sound", "keys", "--variant", "-1"}), HasSubstr("no variation -1"));
    EXPECT_EQ(refusal({"--sound", "keys", "--release"}),
              "vornic: There is no release: sound \"keys\" of \"Buckling Spring\" has none.\n");
    EXPECT_EQ(refusal({"--sound", "keys", "--stabilised"}),
              "vornic: No stabilised key plays sound \"keys\" of \"Buckling Spring\".\n");
}

TEST_F(BoardProgramTest, refusesOptionsThatMakeNoSense) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"stroke", "--sound", "keys", "--out", "x", "--velocity", "mild"},
          {"stroke", "--sound", "keys", "--out", "x", "--release", "--stabilised"},
          {"stroke", "--sound", "keys"},
          {"render-board", "spring"},
          {"export", "spring"},
          {"import"}}) {
        EXPECT_EQ(run(arguments).status, 2) << arguments[0];
    }
}

TEST_F(BoardProgramTest, everyStrokeOfABoardIsWrittenAndCounted) {
    const Board board = usersBoard("data");
    const SampleLibrary library(packs(), scratch_ / "data/Vornic/Samples");
    const auto bank = buildBoard(board, library, 2).bank;
    const Result result = run({"render-board", "mine-1", "--out", path("out/strokes"), "--json"});
    ASSERT_EQ(result.status, 0) << result.output;
    const json report = json::parse(result.output);
    EXPECT_THAT(result.output, MatchesRegex("\\{\"pools\":[0-9]+,\"strokes\":[0-9]+,"
                                            "\"frames\":[0-9]+,\"ms\":[0-9.]+\\}\n"));
    EXPECT_EQ(report["pools"], bank->pools().size());
    std::size_t files = 0;
    std::int64_t frames = 0;
    for (const auto& entry : fs::directory_iterator(scratch_ / "out/strokes")) {
        frames += std::ssize(floatsOf(entry.path()));
        ++files;
    }
    EXPECT_EQ(report["strokes"], files);
    EXPECT_EQ(report["frames"], frames);
    EXPECT_GT(report["ms"], 0);
    EXPECT_EQ(floatsOf(scratch_ / "out/strokes/01-soft-00.wav"),
              framesOf(bank->pool(VoiceBank::key("keys", false, Velocity::soft))[0]));
    EXPECT_EQ(floatsOf(scratch_ / "out/strokes/02-stabilised-hard-11.wav"),
              framesOf(bank->pool(VoiceBank::key("space", true, Velocity::hard))[11]));
    EXPECT_EQ(floatsOf(scratch_ / "out/strokes/01-release-05.wav"),
              framesOf(bank->pool(VoiceBank::releaseKey("keys"))[5]));
    const Result words = run({"render-board", "mine-1", "--out", path("out/strokes")});
    EXPECT_THAT(words.output, StartsWith(std::to_string(files) + " strokes in "));
}

TEST_F(BoardProgramTest, saysWhichFileOfTheUsersCannotBeRead) {
    scratch_.write("data/Vornic/Boards/mine-2.json", "{}");
    const Result result = run({"boards"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, AllOf(HasSubstr("mine-2.json"), HasSubstr("schema: missing"),
                                     HasSubstr("spring  Buckling Spring")));
}

} // namespace
} // namespace vornic
