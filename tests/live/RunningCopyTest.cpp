// One running copy in a session, and what others can ask of it, on a real D-Bus session.

#include "Vornic/linux/desktop/DBusRunningCopy.h"
#include "tests/live/ProgramFixture.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <QCoreApplication>
#include <csignal>

namespace vornic {
namespace {

using ::testing::HasSubstr;

using RunningCopyTest = ProgramFixture;

TEST_F(RunningCopyTest, withoutOneACommandSaysHowToStartIt) {
    const Outcome outcome = run({"off"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "Vornic is not running. Start it with: vornic\n");
}

TEST_F(RunningCopyTest, answersCommands) {
    const auto program = startListening();
    EXPECT_EQ(run({"off"}).output, "Off · keys are silent\n");
    EXPECT_TRUE(says("Off · keys are silent"));
    EXPECT_EQ(run({"toggle"}).output, "Buckling Spring · On the desk\n");
    EXPECT_EQ(run({"volume", "0.5"}).output, "0.5\n");
    EXPECT_EQ(run({"board", "next"}).output, "spring Buckling Spring\n");
    const Outcome lost = run({"board", "lost"});
    EXPECT_EQ(lost.status, 1);
    EXPECT_THAT(lost.output, HasSubstr("There is no board \"lost\""));
    const auto status = nlohmann::json::parse(run({"status", "--json"}).output);
    EXPECT_EQ(status["volume"], 0.5);
    EXPECT_EQ(status["keys"], "listening");
    EXPECT_TRUE(waitFor([&] {
        return readBytes(scratch / "config/Vornic/settings.json").find("\"volume\": 0.5") !=
               std::string::npos;
    }));
}

TEST_F(RunningCopyTest, aSecondStartGoesToTheFirst) {
    const auto program = startListening();
    const Outcome second = run({"--packs", packs().string()});
    EXPECT_EQ(second.status, 0);
    EXPECT_THAT(second.output, HasSubstr("running already"));
    EXPECT_TRUE(says("Another start was sent here"));
}

TEST_F(RunningCopyTest, aWordOfMegabytesIsRefusedAtTheDoor) {
    const auto program = startListening();
    int count = 0;
    QCoreApplication application(count, nullptr);
    DBusRunningCopy copy;
    const ControlAnswer refused{1, "A command has too many or too long words."};
    EXPECT_EQ(copy.ask({"open", std::string(8U << 20U, 'x')}), refused);
    EXPECT_EQ(copy.ask(RunningCopy::Words(100'000, "board")), refused);
    EXPECT_EQ(copy.ask({"volume", "0.5"}), (ControlAnswer{0, "0.5"}));
}

TEST_F(RunningCopyTest, makesRoomForTheNextWhenItIsKilled) {
    startListening()->end(SIGKILL);
    std::filesystem::remove(log());
    const auto next = startListening();
    EXPECT_EQ(run({"status"}).status, 0);
}

TEST_F(RunningCopyTest, aRelaunchTakesItsOwnPlaceAndKeepsArgumentsAndSettings) {
    const auto program = startListening({"--hidden", "--volume", "0.3"});
    run({"off"});
    EXPECT_EQ(run({"relaunch"}).output, "Vornic starts again.\n");
    ASSERT_TRUE(saysTwice("Vornic is listening")) << readBytes(log());
    const auto status = nlohmann::json::parse(run({"status", "--json"}).output);
    EXPECT_EQ(status["volume"], 0.3) << "an argument";
    EXPECT_EQ(status["soundsOn"], false) << "a setting";
    // It has the process of the one before, so the same signal still reaches it.
    program->end(SIGTERM);
    EXPECT_THAT(run({"status"}).output, HasSubstr("Vornic is not running."));
}

TEST_F(RunningCopyTest, aBoardFileIsLookedAtOnceAndNotAgainAfterARelaunch) {
    const std::string file = scratch / "given.vornic";
    ASSERT_EQ(run({"export", "spring", file, "--packs", packs().string()}).status, 0);
    const auto program = startListening({file});
    ASSERT_TRUE(says("Looking at the board Buckling Spring"));
    EXPECT_EQ(run({"relaunch"}).status, 0);
    EXPECT_TRUE(saysTwice("Vornic is listening"));
    EXPECT_FALSE(hasSaidTwice("Looking at the board"));
    EXPECT_TRUE(std::filesystem::is_empty(scratch / "data/Vornic/Boards")) << "it is not kept yet";
}

TEST_F(RunningCopyTest, theSelfTestLooksAtItsOwnProcessWhateverElseRuns) {
    const auto program = startListening();
    const std::filesystem::path output = scratch / "selftest.log";
    const auto tested =
        start({"--selftest", "--selftest-mic", "--packs", packs().string()}, output);
    ASSERT_TRUE(waitFor(
        [&] { return readBytes(output).find("keys heard through the tap=") != std::string::npos; },
        std::chrono::seconds(30)));
    const std::string said = readBytes(output);
    EXPECT_THAT(said, HasSubstr("Vornic selftest: packs=1 boards=1 library=6"));
    EXPECT_THAT(said, HasSubstr("Vornic selftest: quiet keys took 4 of 4 (0 means AppKit beeped), "
                                "focus on QWindow"));
    EXPECT_THAT(said, HasSubstr("writable=yes input monitoring=yes tap=yes"));
    EXPECT_THAT(said, HasSubstr("mic state readable=yes"));
    EXPECT_THAT(said, HasSubstr(" keys started=15 (phrase has 15)"))
        << "its own recording does not silence it";
    EXPECT_THAT(said, HasSubstr("Vornic selftest: microphone allowed=yes"));
    EXPECT_THAT(said, HasSubstr("recording started=yes samples="));
    EXPECT_THAT(said, HasSubstr("mic in use while recording=yes"));
    EXPECT_FALSE(std::filesystem::exists(scratch / "data/Vornic/.selftest"));
}

TEST_F(RunningCopyTest, startsWithTheSessionOnceTheUserSaysSo) {
    const auto entry = scratch / "config/autostart/vornic.desktop";
    EXPECT_EQ(run({"autostart"}).output, "off\n");
    EXPECT_EQ(run({"autostart", "enable"}).output, "on\n");
    EXPECT_THAT(readBytes(entry), HasSubstr(std::string("Exec=\"") + VORNIC_PROGRAM + "\""));
    EXPECT_EQ(run({"autostart", "disable"}).output, "off\n");
    EXPECT_FALSE(std::filesystem::exists(entry));
}

void expectPictures(const std::filesystem::path& folder) {
    for (const char* const view : {"menu-", "simple-", "studio-keys-", "studio-sounds-"}) {
        for (const char* const appearance : {"light.png", "dark.png"}) {
            EXPECT_TRUE(std::filesystem::exists(folder / (std::string(view) + appearance)))
                << view << appearance;
        }
    }
}

TEST_F(RunningCopyTest, aSnapshotPicturesTheViewsBesideARunningCopyAndWritesNoUserData) {
    const auto program = startListening();
    const auto pictures = scratch / "some" / "pictures";
    const Outcome outcome = run({"--snapshot", pictures.string(), "--packs", packs().string()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("Vornic snapshot: saved to " + pictures.string()));
    expectPictures(pictures);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(scratch / "data")) {
        EXPECT_FALSE(entry.is_regular_file()) << entry.path();
    }
}

TEST_F(RunningCopyTest, aSnapshotNeedsNeitherADisplayNorASoundServer) {
    const auto pictures = scratch / "pictures";
    const auto program = startWithClicks({"--snapshot", pictures.string()},
                                         {{"DISPLAY", ""},
                                          {"WAYLAND_DISPLAY", ""},
                                          {"QT_QPA_PLATFORM", "offscreen"},
                                          {"XDG_RUNTIME_DIR", (scratch / "empty").string()},
                                          {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"}});
    EXPECT_EQ(program->wait(), 0);
    EXPECT_THAT(readBytes(log()), HasSubstr("Vornic snapshot: saved to " + pictures.string()));
    expectPictures(pictures);
}

TEST_F(RunningCopyTest, withoutItsFolderTheSnapshotSwitchDoesNothing) {
    const auto program = startListening({"--selftest-mic"});
    EXPECT_EQ(run({"--snapshot"}).status, 0) << "it goes to the running copy as any start does";
    EXPECT_THAT(readBytes(log()), ::testing::Not(HasSubstr("selftest")));
}

TEST_F(RunningCopyTest, goesQuietWhileAnotherProgramRecordsFromTheMicrophone) {
    const auto program = startListening();
    {
        const ChildProcess recorder({"pw-record", (scratch / "call.wav").string()}, {},
                                    (scratch / "recorder.log").string());
        EXPECT_TRUE(says("Silent while your microphone is on")) << readBytes(log());
        EXPECT_EQ(nlohmann::json::parse(run({"status", "--json"}).output)["silence"], "microphone");
    }
    EXPECT_TRUE(says("Sounds are on"));
}

} // namespace
} // namespace vornic
