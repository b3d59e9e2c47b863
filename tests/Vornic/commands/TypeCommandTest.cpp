#include "Vornic/commands/TypeCommand.h"

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/board/BoardJson.h"
#include "tests/support/ClickPack.h"
#include "tests/support/Environment.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class TypeCommandTest : public ::testing::Test {
  protected:
    TypeCommandTest() {
        config.set(folder / "config");
        data.set(folder / "data");
        request.text = "ab";
        request.out = folder / "typed.wav";
        request.packs = folder / "packs";
        writeClickPack(request.packs);
    }

    std::string refusal() const {
        try {
            typeIntoFile(request);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    }

    ScratchFolder folder;
    Environment config{"XDG_CONFIG_HOME"};
    Environment data{"XDG_DATA_HOME"};
    TypeRequest request;
};

TEST_F(TypeCommandTest, typesATextIntoAFile) {
    const TypeOutcome outcome = typeIntoFile(request);
    EXPECT_EQ(outcome.report.keys, 2);
    EXPECT_EQ(outcome.report.started, 2);
    EXPECT_THAT(outcome.remarks, IsEmpty());
    const auto frames = loadAudio(request.out);
    ASSERT_TRUE(frames.has_value());
    EXPECT_EQ(std::ssize(*frames), outcome.report.frames);
}

TEST_F(TypeCommandTest, theSeedChoosesTheHandAndNothingElseDoes) {
    const auto typed = [this](std::uint64_t seed) {
        request.seed = seed;
        typeIntoFile(request);
        return readBytes(request.out);
    };
    const std::string first = typed(1);
    EXPECT_EQ(typed(1), first);
    EXPECT_NE(typed(2), first);
}

TEST_F(TypeCommandTest, saysHowManyCharactersHaveNoKey) {
    request.text = "a\xC3\xA4\xE2\x82\xAC";
    const TypeOutcome outcome = typeIntoFile(request);
    EXPECT_EQ(outcome.report.keys, 1);
    EXPECT_THAT(outcome.remarks,
                ElementsAre("Left out 2 characters that a US keyboard has no key for."));
}

TEST_F(TypeCommandTest, playsAKeyFile) {
    request.text.reset();
    request.keys = folder.write("keys", "0 down 0\n30 up 0\n1000 down 49\n");
    const TypeOutcome outcome = typeIntoFile(request);
    EXPECT_EQ(outcome.report.keys, 2);
    EXPECT_GT(outcome.report.frames, 48000);
    EXPECT_LT(outcome.report.frames, 2 * 48000);
}

TEST_F(TypeCommandTest, aBadKeyFileIsNamedWithItsLineAndNothingIsWritten) {
    request.text.reset();
    request.keys = folder.write("keys", "0 down 0\n1 sideways 0\n");
    EXPECT_THAT(refusal(), StartsWith(request.keys->string() + ", line 2: "));
    request.keys = folder / "missing";
    EXPECT_THAT(refusal(), HasSubstr(request.keys->string()));
    EXPECT_FALSE(std::filesystem::exists(request.out));
}

TEST_F(TypeCommandTest, takesTheBoardThatWasNamed) {
    request.board = "spring";
    EXPECT_EQ(typeIntoFile(request).report.started, 2);
    request.board = "no-such-board";
    EXPECT_THAT(refusal(), StartsWith("There is no board and no file \"no-such-board\"."));
}

TEST_F(TypeCommandTest, saysThatABoardWithoutItsRecordingsIsSilent) {
    request.board = folder.write("board.json",
                                 encodeBoard(Board("b", "B", "", "#000000", BuildParts{}, {}, {})));
    const TypeOutcome outcome = typeIntoFile(request);
    EXPECT_EQ(outcome.report.started, 0);
    EXPECT_THAT(outcome.remarks,
                ElementsAre("None of this board's recordings is there, so it is silent."));
}

TEST_F(TypeCommandTest, hearsTheDeskBinaurallyOnHeadphonesOnly) {
    const auto typed = [this](Placement placement, OutputKind kind) {
        request.stage.placement = placement;
        request.outputKind = kind;
        typeIntoFile(request);
        return readBytes(request.out);
    };
    const std::string ears = typed(Placement::desk, OutputKind::headphones);
    EXPECT_NE(ears, typed(Placement::desk, OutputKind::speakers));
    // No output is known to be one: a file is not worn.
    EXPECT_EQ(typed(Placement::desk, OutputKind::automatic),
              typed(Placement::desk, OutputKind::speakers));
    EXPECT_EQ(typed(Placement::close, OutputKind::headphones),
              typed(Placement::close, OutputKind::speakers));
}

TEST_F(TypeCommandTest, volumeAndRawReachTheFile) {
    request.volume = 0.0;
    EXPECT_EQ(typeIntoFile(request).report.peak, 0.0F);
    request.raw = true;
    EXPECT_GT(typeIntoFile(request).report.peak, 0.0F);
}

TEST(TypeReport, isOneLineOfJson) {
    EXPECT_EQ(
        reportAsJson(
            {.keys = 5, .started = 4, .dropped = 1, .stolen = 2, .peak = 0.1F, .frames = 640}),
        R"({"keys":5,"started":4,"dropped":1,"stolen":2,"peak":0.1,"frames":640})");
}

} // namespace
} // namespace vornic
