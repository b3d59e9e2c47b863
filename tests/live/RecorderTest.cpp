// Recording through a real sound server.

#include "Vornic/recording/Recorder.h"

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "VornicCore/strokes/Slicer.h"
#include "tests/live/PlayedMicrophone.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/TypingNoise.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vornic {
namespace {

class RecorderLiveTest : public testing::Test {
  protected:
    /// Waits until `count` samples have been captured.
    static bool hears(const Recorder& recorder, std::size_t count) {
        std::vector<float> heard;
        return waitFor([&] {
            recorder.hear(heard);
            return heard.size() >= count;
        });
    }

    QueueScheduler scheduler_;
};

TEST_F(RecorderLiveTest, recordsWhatIsPlayedAndFindsItsStrokes) {
    TypingNoise typing(3, 48000, 1e-4F);
    typing.hit(0.5, 0.5F).hit(1.1, 0.4F).hit(1.8, 0.3F).hit(2.4, 0.2F);
    PrivateSoundServer server;
    server.start();
    PlayedMicrophone keyboard(server.remote());
    ASSERT_TRUE(server.waitForDefaultSource("played-microphone"));
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler_, connection);
    Recorder recorder(microphone);
    std::vector<float> take;
    // Once more only where the capture itself says that it has missed something.
    for (int attempt = 0; attempt == 0 || (attempt < 5 && !recorder.gaps().empty()); ++attempt) {
        ASSERT_TRUE(recorder.start(20)) << recorder.problem();
        EXPECT_EQ(recorder.inputRate(), 48000);
        ASSERT_TRUE(hears(recorder, 1));
        keyboard.play(typing.samples());
        EXPECT_TRUE(keyboard.waitUntilPlayed());
        take = recorder.stop();
    }
    EXPECT_EQ(recorder.gaps(), std::vector<Gap>());
    const auto strokes = Slicer::strokes(take, 48000);
    ASSERT_EQ(strokes.size(), 4U);
    // Not a frame is lost or added; where it begins, the test decides.
    EXPECT_NEAR(strokes[1].start - strokes[0].start, 0.6, 0.0005);
    EXPECT_NEAR(strokes[2].start - strokes[1].start, 0.7, 0.0005);
    EXPECT_NEAR(strokes[3].start - strokes[2].start, 0.6, 0.0005);
    for (const Stroke& stroke : strokes) {
        EXPECT_TRUE(stroke.clean);
        EXPECT_GT(stroke.snrDb, 30);
    }
}

TEST_F(RecorderLiveTest, endsAtTheLimitAndStaysQuiet) {
    SoundServer connection;
    PipeWireMicrophone microphone(scheduler_, connection);
    Recorder recorder(microphone);
    ASSERT_TRUE(recorder.start(0.25)) << recorder.problem();
    std::vector<float> heard;
    EXPECT_TRUE(waitFor([&] {
        recorder.hear(heard);
        return heard.size() == 12000;
    }));
    EXPECT_EQ(recorder.level(), 0.0F);
    EXPECT_EQ(recorder.stop(), std::vector<float>(12000));
}

TEST_F(RecorderLiveTest, canBeStartedAgain) {
    SoundServer connection;
    PipeWireMicrophone microphone(scheduler_, connection);
    Recorder recorder(microphone);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(recorder.start(1)) << recorder.problem();
        EXPECT_TRUE(hears(recorder, 1));
        EXPECT_FALSE(recorder.stop().empty());
    }
}

TEST_F(RecorderLiveTest, refusesTheMonitorOfASinkAsAMicrophone) {
    PrivateSoundServer server;
    server.start();
    server.addSink("speakers");
    ASSERT_TRUE(server.waitForDefaultSink("speakers"));
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler_, connection);
    Recorder recorder(microphone);
    EXPECT_FALSE(recorder.start(20));
    EXPECT_EQ(recorder.problem(),
              "No microphone is connected: connect one, or choose one in the sound settings.");
    server.addSource("mic");
    EXPECT_TRUE(waitFor([&] { return recorder.start(20); })) << recorder.problem();
    EXPECT_TRUE(hears(recorder, 1));
}

TEST_F(RecorderLiveTest, refusesWithoutASoundServer) {
    PrivateSoundServer server;
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler_, connection);
    Recorder recorder(microphone);
    EXPECT_FALSE(recorder.start(20));
    EXPECT_NE(recorder.problem(), "");
}

TEST_F(RecorderLiveTest, opensAtOnceTheMicrophoneThatWasAskedFor) {
    ManualScheduler scheduler;
    SoundServer connection;
    PipeWireMicrophone microphone(scheduler, connection);
    Recorder recorder(microphone);
    bool started = false;
    recorder.requestAccess([&](bool) { started = recorder.start(20); });
    EXPECT_TRUE(waitFor([&] {
        scheduler.run();
        return started;
    })) << recorder.problem();
    EXPECT_TRUE(hears(recorder, 1));
}

TEST_F(RecorderLiveTest, neverHoldsUpTheMainThreadForAServerThatDoesNotAnswer) {
    PrivateSoundServer server;
    server.start();
    server.addSource("mic");
    server.freeze();
    ManualScheduler scheduler;
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler, connection);
    Recorder recorder(microphone);
    const MonotonicClock clock;
    std::optional<bool> started;
    std::uint64_t nanos = 0;
    const auto spent = [&](const auto& work) {
        const std::uint64_t before = clock.nanos();
        work();
        nanos += clock.nanos() - before;
    };
    spent([&] { recorder.requestAccess([&](bool) { started = recorder.start(20); }); });
    scheduler.run();
    EXPECT_EQ(started, std::nullopt);
    spent([&] { scheduler.advance(std::chrono::seconds(2)); });
    spent([&] { scheduler.run(); });
    EXPECT_EQ(started, false);
    EXPECT_EQ(recorder.problem().substr(0, 37), "The sound server does not answer: res");
    // A wait for the server would take two seconds.
    EXPECT_LT(nanos, 1'000'000'000U);
    server.thaw();
}

TEST_F(RecorderLiveTest, keepsWhatItHeardWhenTheMicrophoneIsPulledOut) {
    PrivateSoundServer server;
    server.start();
    server.addSink("speakers");
    server.addSource("mic");
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler_, connection);
    Recorder recorder(microphone);
    std::vector<std::string> messages;
    recorder.onLost = [&](const std::string& message) { messages.push_back(message); };
    ASSERT_TRUE(waitFor([&] { return recorder.start(20); })) << recorder.problem();
    ASSERT_TRUE(hears(recorder, 4800));
    server.removeSink("mic");
    EXPECT_TRUE(waitFor([&] {
        scheduler_.run();
        return !messages.empty();
    }));
    // Whatever the server connects instead is no microphone.
    std::vector<float> before;
    recorder.hear(before);
    const std::vector<float> kept = recorder.stop();
    EXPECT_EQ(kept, before);
    EXPECT_GE(kept.size(), 4800U);
    scheduler_.run();
    EXPECT_EQ(messages, std::vector<std::string>{
                            "The microphone is gone. What it heard until then has been kept."});
}

TEST_F(RecorderLiveTest, keepsWhatItHeardWhenTheSoundServerEnds) {
    PrivateSoundServer server;
    server.start();
    server.addSource("mic");
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler_, connection);
    Recorder recorder(microphone);
    int lost = 0;
    recorder.onLost = [&](const std::string&) { ++lost; };
    ASSERT_TRUE(waitFor([&] { return recorder.start(20); })) << recorder.problem();
    ASSERT_TRUE(hears(recorder, 4800));
    server.kill();
    EXPECT_TRUE(waitFor([&] {
        scheduler_.run();
        return lost == 1;
    }));
    EXPECT_GE(recorder.stop().size(), 4800U);
    server.start();
    server.addSource("mic");
    EXPECT_TRUE(waitFor([&] { return recorder.start(20); })) << recorder.problem();
}

} // namespace
} // namespace vornic
