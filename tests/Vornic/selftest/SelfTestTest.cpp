#include "Vornic/selftest/SelfTest.h"

#include "tests/support/ModelFixture.h"

#include <gmock/gmock.h>

#include <sstream>

namespace vornic {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

class SelfTestTest : public ModelFixture {
  protected:
    SelfTestTest() {
        environment.ownKeys = [] { return SelfTest::OwnKeys{4, "QWindow"}; };
        environment.folder = scratch.path();
    }

    /// Starts the model and the test, and lets time pass; what it said.
    std::vector<std::string> linesAfter(std::chrono::milliseconds time) {
        EXPECT_TRUE(startToPlay());
        SelfTest test(*model, platform(), environment);
        test.start();
        for (auto passed = 0ms; passed < time; passed += 100ms) {
            scheduler.advance(100ms);
            scheduler.run();
            // The phrase goes by the key thread.
            EXPECT_TRUE(eventually([this] { return keyThreadIsIdle(); }));
            if (output.isRunning()) {
                (void)output.render(4800, clock.nanos());
            }
        }
        return lines();
    }

    bool keyThreadIsIdle() {
        const auto done = std::make_shared<std::atomic<bool>>(false);
        model->keys().post([done] { *done = true; });
        return waitFor([&] { return done->load(); });
    }

    std::vector<std::string> lines() const {
        std::vector<std::string> found;
        std::istringstream text(log.all());
        const std::string start = "Vornic selftest: ";
        for (std::string line; std::getline(text, line);) {
            if (line.starts_with(start)) {
                found.push_back(line.substr(start.size()));
            }
        }
        return found;
    }

    SelfTest::Environment environment;
};

TEST_F(SelfTestTest, withoutItNothingIsSaid) {
    ASSERT_TRUE(startToPlay());
    scheduler.advance(15'000ms);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(SelfTestTest, saysEveryLineInItsOrder) {
    // Five recordings of the pack, and the spring's ping that is made of one.
    EXPECT_THAT(
        linesAfter(11'000ms),
        ElementsAre("packs=1 boards=1 library=6 board=Buckling Spring sounds=5",
                    MatchesRegex("full render [0-9]+ ms, pools=[1-9][0-9]*"),
                    "quiet keys took 4 of 4 (0 means AppKit beeped), focus on QWindow",
                    "sandboxed=no folder=" + scratch.path().string() +
                        " writable=yes input monitoring=yes tap=yes shortcut=yes mic state "
                        "readable=yes",
                    MatchesRegex("frames rendered=[1-9][0-9]* keys started=15 \\(phrase has 15\\) "
                                 "headphones=no binaural=no"),
                    "keys heard through the tap=0"));
}

TEST_F(SelfTestTest, leavesNothingInTheFolder) {
    linesAfter(600ms);
    EXPECT_FALSE(std::filesystem::exists(scratch / ".selftest"));
}

TEST_F(SelfTestTest, saysWhatDoesNotWork) {
    tap.allowed = false;
    environment.folder = scratch / "missing";
    environment.sandboxed = true;
    environment.ownKeys = [] { return SelfTest::OwnKeys(); };
    start();
    SelfTest test(*model, platform(), environment);
    test.start();
    scheduler.advance(600ms);
    EXPECT_THAT(log.all(), HasSubstr("took 0 of 4 (0 means AppKit beeped), focus on nothing"));
    EXPECT_THAT(log.all(), HasSubstr("sandboxed=yes folder=" + (scratch / "missing").string() +
                                     " writable=no input monitoring=no tap=no"));
}

TEST_F(SelfTestTest, countsTheKeysThatComeThroughTheTap) {
    ASSERT_TRUE(startToPlay());
    SelfTest test(*model, platform(), environment);
    test.start();
    scheduler.advance(600ms);
    for (int press = 1; press <= 3; ++press) {
        tap.press();
        ASSERT_TRUE(eventually([&] { return model->keys().keysHeard() == press; }));
    }
    scheduler.advance(10'000ms);
    EXPECT_EQ(lines().back(), "keys heard through the tap=3");
}

TEST_F(SelfTestTest, recordsFromTheMicrophoneWhereThatIsAskedFor) {
    environment.withMicrophone = true;
    double asked = 0;
    environment.microphone = {
        .requestAccess = [](const std::function<void(bool)>& answer) { answer(true); },
        .start =
            [&](double seconds) {
                asked = seconds;
                microphone.used = true;
                return true;
            },
        .stop =
            [&] {
                microphone.used = false;
                return std::vector<float>{0.1F, -0.25F, 0.2F};
            }};
    const auto said = linesAfter(2100ms);
    EXPECT_EQ(asked, 3.0);
    EXPECT_THAT(said[4], "microphone allowed=yes");
    EXPECT_THAT(said[5],
                "recording started=yes samples=3 peak=0.2500 mic in use while recording=yes");
}

TEST_F(SelfTestTest, saysThatTheMicrophoneIsNotAllowed) {
    environment.withMicrophone = true;
    EXPECT_THAT(linesAfter(2100ms).back(), "microphone allowed=no");
}

TEST_F(SelfTestTest, runsWithoutAnyBoard) {
    std::filesystem::remove_all(scratch / "Packs");
    restart();
    SelfTest test(*model, platform(), environment);
    test.start();
    scheduler.advance(11'000ms);
    EXPECT_THAT(lines(), ::testing::Contains("packs=0 boards=0 library=0 board=nothing sounds=0"));
    EXPECT_THAT(lines(), ::testing::Contains("full render 0 ms, pools=0"));
}

} // namespace
} // namespace vornic
