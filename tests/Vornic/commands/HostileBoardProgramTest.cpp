// Boards that somebody made to do harm, in the real program: it says which field is wrong, and
// neither crashes nor hangs nor fills the memory.

#include "VornicCore/board/BoardJson.h"
#include "VornicCore/board/BuiltInBoards.h"
#include "tests/live/ChildProcess.h"
#include "tests/support/ClickPack.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <sys/stat.h>

namespace vornic {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;

class HostileBoardProgramTest : public testing::Test {
  protected:
    HostileBoardProgramTest() {
        writeClickPack(scratch_ / "packs");
        board_ =
            json::parse(encodeBoard(BuiltInBoards::make(SoundPack::all(scratch_ / "packs")).at(0)));
    }

    /// What the program says about a file of this text; its exit status is `status`.
    std::string rendering(const std::string& text, int status, const char* name = "board.json") {
        const std::string file = scratch_.write(name, text).string();
        const std::string log = (scratch_ / "log").string();
        ChildProcess program({VORNIC_PROGRAM, "render-board", file, "--packs",
                              (scratch_ / "packs").string(), "--out", (scratch_ / "out").string()},
                             {{"XDG_DATA_HOME", (scratch_ / "data").string()}}, log);
        EXPECT_EQ(program.wait(), status) << readBytes(log);
        rusage usage{};
        getrusage(RUSAGE_CHILDREN, &usage);
        constexpr long mostKilobytes = 1L << 20;
        EXPECT_LT(usage.ru_maxrss, mostKilobytes) << "a gibibyte";
        return readBytes(log);
    }

    json& layer() { return board_["sounds"][0]["press"]["layers"][0]; }
    json& chain() { return board_["sounds"][0]["press"]["chain"]; }

    ScratchFolder scratch_;
    json board_;
};

TEST_F(HostileBoardProgramTest, whatIsNoNumberIsRefusedWithItsPlace) {
    std::string text = board_.dump();
    const std::string field = "\"dampingStartMs\":";
    const std::size_t at = text.find(field) + field.size();
    text.replace(at, text.find(',', at) - at, "NaN");
    EXPECT_THAT(rendering(text, 1), AllOf(HasSubstr("board.json is no board"),
                                          HasSubstr("sounds[0].press.chain.dampingStartMs")));
}

TEST_F(HostileBoardProgramTest, enormousNumbersAreRenderedWithinTheirLimits) {
    layer()["gainDb"] = 1e300;
    layer()["pitch"] = -1e300;
    layer()["offsetMs"] = 1e300;
    chain()["dampingStartMs"] = -1e300;
    chain()["bodyModes"] = {{{"frequency", 1e300}, {"decayMs", 1e300}, {"gainDb", 1e300}}};
    const std::string said = rendering(board_.dump(), 0);
    for (const char* const field :
         {"layer 1 gainDb is 1e+300, rendered as 120", "layer 1 pitch is -1e+300",
          "layer 1 offsetMs is 1e+300", "dampingStartMs is -1e+300",
          "bodyModes frequency is 1e+300", "bodyModes decayMs is 1e+300"}) {
        EXPECT_THAT(said, HasSubstr(field));
    }
}

TEST_F(HostileBoardProgramTest, aNumberTooLargeForItsFieldIsRefusedWithItsPlace) {
    chain()["eq"] = {{"gains", {"bass", 1e300}}};
    EXPECT_THAT(rendering(board_.dump(), 1), HasSubstr("sounds[0].press.chain.eq.gains[1]"));
}

TEST_F(HostileBoardProgramTest, negativeVariationsLeaveTheSoundSilent) {
    board_["sounds"][0]["variations"] = -5;
    EXPECT_THAT(rendering(board_.dump(), 0), HasSubstr("variations is -5, rendered as 0"));
}

TEST_F(HostileBoardProgramTest, aMillionVariationsAreSixtyFour) {
    for (json& sound : board_["sounds"]) {
        sound["variations"] = 1'000'000;
    }
    EXPECT_THAT(rendering(board_.dump(), 0), HasSubstr("variations is 1000000, rendered as 64"));
}

TEST_F(HostileBoardProgramTest, thousandsOfSoundsAreRenderedUpToALimit) {
    const json sound = board_["sounds"][0];
    for (int number = 0; number < 5000; ++number) {
        board_["sounds"].push_back(sound);
        board_["sounds"].back()["id"] = std::to_string(number);
        board_["sounds"].back()["character"]["depth"] = number * 0.0001;
    }
    EXPECT_THAT(rendering(board_.dump(), 0), HasSubstr("those beyond are not rendered"));
}

TEST_F(HostileBoardProgramTest, thousandsOfLayersAreRenderedUpToALimit) {
    json& layers = board_["sounds"][0]["press"]["layers"];
    const json one = layer();
    for (int number = 0; number < 20'000; ++number) {
        layers.push_back(one);
    }
    EXPECT_THAT(rendering(board_.dump(), 0),
                HasSubstr("layers is 20001 long, rendered as 32 long"));
}

TEST_F(HostileBoardProgramTest, aNameOfMegabytesIsNotRepeatedInEveryMessage) {
    board_["sounds"][0]["name"] = std::string(20'000'000, 'x');
    json modes = json::array();
    for (int number = 0; number < 1000; ++number) {
        modes.push_back({{"frequency", 1e300}, {"decayMs", 1e300}, {"gainDb", 1e300}});
    }
    chain()["bodyModes"] = modes;
    layer()["gainDb"] = 1e300;
    const std::string said = rendering(board_.dump(), 0);
    EXPECT_THAT(said, HasSubstr("layer 1 gainDb is 1e+300"));
    EXPECT_LT(said.size(), 20'000U);
}

TEST_F(HostileBoardProgramTest, textsDoNotControlTheTerminal) {
    board_["sounds"][0]["name"] = "\x1b[2Jgone";
    layer()["gainDb"] = 1e300;
    const std::string said = rendering(board_.dump(), 0);
    EXPECT_THAT(said, HasSubstr("?[2Jgone"));
    EXPECT_EQ(said.find('\x1b'), std::string::npos);
}

TEST_F(HostileBoardProgramTest, endlessRecordingsInABoardFileAreCut) {
    const std::string minutes = [] {
        // Noise, at 48000 frames a second: three minutes, far more than any keystroke.
        std::string text;
        text.reserve(24'000'000);
        std::uint32_t state = 1;
        while (text.size() < 24'000'000) {
            state = state * 1664525 + 1013904223;
            text +=
                "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"[state >> 26U];
        }
        return text;
    }();
    layer()["samples"] = {"user/a"};
    layer()["pitch"] = -36;
    board_["sounds"][0]["variations"] = 64;
    const json document{{"format", "vornic-board"},
                        {"version", 1},
                        {"board", board_},
                        {"samples", {{"user/a", minutes}}}};
    EXPECT_THAT(rendering(document.dump(), 0, "board.vornic"), HasSubstr(" strokes in "));
}

TEST_F(HostileBoardProgramTest, namedPipesAreRefusedWhereverAFileIsRead) {
    const std::string pipe = (scratch_ / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_directories(scratch_ / "packs/stuck");
    ASSERT_EQ(mkfifo((scratch_ / "packs/stuck/pack.json").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((scratch_ / "packs/spring/regular-09.wav").c_str(), 0600), 0);
    const std::string packs = (scratch_ / "packs").string();
    const std::string log = (scratch_ / "log").string();
    const std::vector<std::vector<std::string>> commands{
        {"render-board", pipe, "--out", (scratch_ / "out").string()},
        {"import", pipe},
        {"type", "--keys", pipe, "--out", (scratch_ / "typed.wav").string()}};
    for (std::vector<std::string> command : commands) {
        SCOPED_TRACE(command.front());
        command.insert(command.begin(), VORNIC_PROGRAM);
        command.insert(command.end(), {"--packs", packs});
        ChildProcess program(command, {{"XDG_DATA_HOME", (scratch_ / "data").string()}}, log);
        EXPECT_EQ(program.wait(), 1);
        EXPECT_THAT(readBytes(log), HasSubstr("it is no regular file"));
    }
    ChildProcess slicing({VORNIC_PROGRAM, "slice", pipe, "--out", (scratch_ / "strokes").string()},
                         {}, log);
    EXPECT_EQ(slicing.wait(), 1);
}

} // namespace
} // namespace vornic
