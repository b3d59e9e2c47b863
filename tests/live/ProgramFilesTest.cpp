// The whole program with files of the user's that are not what they should be.

#include "tests/live/ProgramFixture.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <csignal>

namespace vornic {
namespace {

using ::testing::HasSubstr;

class ProgramFilesTest : public ProgramFixture {
  protected:
    /// A pipe that nobody writes to; a program that opens it and waits never ends.
    void makePipe(const std::filesystem::path& file) const {
        std::filesystem::create_directories(file.parent_path());
        ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    }
};

TEST_F(ProgramFilesTest, aPipeInPlaceOfTheSettingsIsPutAsideAndTheProgramListensAndEnds) {
    const auto settings = scratch / "config/Vornic/settings.json";
    makePipe(settings);
    const auto program = startListening();
    EXPECT_THAT(readBytes(log()), HasSubstr("it is no regular file"));
    EXPECT_EQ(run({"volume", "0.25"}).status, 0);
    program->send(SIGTERM);
    EXPECT_EQ(program->wait(), 0);
    EXPECT_THAT(readBytes(settings), HasSubstr("\"volume\": 0.25"));
}

TEST_F(ProgramFilesTest, aPipeAmongTheBoardsIsPassedOver) {
    makePipe(scratch / "data/Vornic/Boards/mine-00000000.json");
    const auto program = startListening();
    EXPECT_THAT(readBytes(log()), HasSubstr("it is no regular file"));
    EXPECT_EQ(run({"board"}).output, "spring Buckling Spring\n");
    program->send(SIGTERM);
    EXPECT_EQ(program->wait(), 0);
}

TEST_F(ProgramFilesTest, aPipeInPlaceOfTheRecordingsIndexIsPassedOver) {
    makePipe(scratch / "data/Vornic/Samples/index.json");
    const auto program = startListening();
    program->send(SIGTERM);
    EXPECT_EQ(program->wait(), 0);
}

TEST_F(ProgramFilesTest, aPipeOpenedAsABoardFileIsRefusedAndTheProgramGoesOn) {
    const auto pipe = scratch / "given.vornic";
    makePipe(pipe);
    const auto program = startListening({pipe.string()});
    EXPECT_TRUE(says("Couldn't read that file.")) << readBytes(log());
    const Outcome second = run({pipe.string()});
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.output, HasSubstr("Couldn't read that file."));
    EXPECT_EQ(run({"status"}).status, 0);
    program->send(SIGTERM);
    EXPECT_EQ(program->wait(), 0);
}

TEST_F(ProgramFilesTest, whatACommandHasChangedOutlivesAKillRightAfterItsAnswer) {
    const auto settings = scratch / "config/Vornic/settings.json";
    const auto program = startListening();
    ASSERT_EQ(run({"volume", "0.25"}).status, 0);
    ASSERT_EQ(run({"board", "spring"}).status, 0);
    ASSERT_EQ(run({"off"}).status, 0);
    program->end(SIGKILL);
    EXPECT_THAT(readBytes(settings), HasSubstr("\"volume\": 0.25"));
    EXPECT_THAT(readBytes(settings), HasSubstr("\"board\": \"spring\""));
    EXPECT_THAT(readBytes(settings), HasSubstr("\"hearMyself\": false"));
}

TEST_F(ProgramFilesTest, aRequestToEndDuringTheWelcomeDoesNotCountAsHavingSeenIt) {
    const auto program = startListening();
    program->send(SIGTERM);
    EXPECT_EQ(program->wait(), 0);
    EXPECT_EQ(readBytes(scratch / "config/Vornic/settings.json").find("welcomed"),
              std::string::npos);
}

} // namespace
} // namespace vornic
