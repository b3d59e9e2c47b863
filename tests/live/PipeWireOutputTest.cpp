#include "Vornic/linux/sound/PipeWireOutput.h"

#include "tests/live/FakeSoundCard.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/live/SinkCapture.h"
#include "tests/support/ExpectRealTimeSafe.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>

namespace vornic {
namespace {

using namespace std::chrono_literals;

/// Plays a sound of eight blocks for every click asked for, silence otherwise. A busy machine can
/// lose a block now and then, but not that many.
class ClickSource final : public AudioOutput::Source {
  public:
    void render(std::int64_t frames, float* left, float* right,
                std::uint64_t nowNanos) VORNIC_REALTIME override {
        const bool sounds = blocksLeft.load() > 0;
        std::fill_n(left, frames, sounds ? 0.5F : 0.0F);
        std::fill_n(right, frames, sounds ? -0.25F : 0.0F);
        if (sounds) {
            --blocksLeft;
        }
        lastFrames = frames;
        lastNanos = nowNanos;
    }
    void streamEnded() override { ++ended; }

    std::atomic<int> blocksLeft{0};
    std::atomic<std::int64_t> lastFrames{0};
    std::atomic<std::uint64_t> lastNanos{0};
    std::atomic<int> ended{0};
};

class PipeWireOutputTest : public ::testing::Test {
  protected:
    void startWithSink(const std::string& properties = {}) {
        server.startServer();
        server.addSink("first", properties);
        server.startSessionManager();
        ASSERT_TRUE(server.waitForDefaultSink("first"));
    }
    bool waitForDevice() {
        const bool found = waitFor([this] { return output.problem().empty(); });
        EXPECT_EQ(output.problem(), "");
        return found;
    }
    bool waitForSilenceOfCalls() {
        // A stream at work calls every 2.7 ms; 100 ms without a call are the silence of a pause.
        std::uint64_t calls = output.renderCalls();
        auto since = std::chrono::steady_clock::now();
        return waitFor([&] {
            const auto now = std::chrono::steady_clock::now();
            if (output.renderCalls() != calls) {
                calls = output.renderCalls();
                since = now;
            }
            return now - since > 100ms;
        });
    }
    bool click() {
        source.blocksLeft = 8;
        return output.requestStart() && waitFor([this] { return source.blocksLeft == 0; });
    }

    PrivateSoundServer server;
    QueueScheduler scheduler;
    ClickSource source;
    SoundServer connection{server.remote()};
    PipeWireOutput output{scheduler, connection, "Vornic test"};
};

TEST_F(PipeWireOutputTest, playsIntoTheDefaultSink) {
    startWithSink();
    SinkCapture capture({.sink = "first", .remote = server.remote()});
    ASSERT_TRUE(capture.waitUntilRunning());
    output.open(source);
    EXPECT_EQ(output.problem(), "");
    EXPECT_FALSE(output.isRunning());
    ASSERT_TRUE(output.requestStart());
    EXPECT_TRUE(output.isRunning());
    ASSERT_TRUE(click());
    const auto onset = capture.waitFor(0, 0.01F);
    ASSERT_TRUE(onset);
    EXPECT_FLOAT_EQ(capture.left(*onset), 0.5F);
    EXPECT_FLOAT_EQ(capture.right(*onset), -0.25F);
}

TEST_F(PipeWireOutputTest, renders128FramesACallWithTheTimeOfTheCycle) {
    startWithSink();
    output.open(source);
    ASSERT_TRUE(output.requestStart());
    ASSERT_TRUE(waitFor([&] { return source.lastFrames == 128; }));
    const auto nanos = [] {
        return static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch() /
                                          1ns);
    };
    const std::uint64_t before = nanos();
    ASSERT_TRUE(waitFor([&] { return source.lastNanos > before; }));
    EXPECT_LT(source.lastNanos, nanos());
    EXPECT_EQ(output.device().bufferFrames, 128U);
}

TEST_F(PipeWireOutputTest, callsNothingWhilePausedAndIsHeardAgainAfterwards) {
    startWithSink();
    output.open(source);
    ASSERT_TRUE(click());
    output.pause();
    EXPECT_FALSE(output.isRunning());
    EXPECT_TRUE(waitForSilenceOfCalls());
    EXPECT_TRUE(click());
}

TEST_F(PipeWireOutputTest, callsNothingBeforeTheFirstStart) {
    startWithSink();
    output.open(source);
    EXPECT_TRUE(waitForSilenceOfCalls());
    EXPECT_EQ(output.renderCalls(), 0U);
}

TEST_F(PipeWireOutputTest, followsTheDefaultDevice) {
    startWithSink();
    server.addSink("second", "device.bus=usb");
    std::atomic<int> changes{0};
    output.onConfigurationChange = [&] { ++changes; };
    output.open(source);
    ASSERT_TRUE(click());
    EXPECT_FALSE(output.device().isHeadphones);
    server.chooseSink("second");
    ASSERT_TRUE(server.waitForDefaultSink("second"));
    ASSERT_TRUE(waitFor([&] { return output.device().name == "second"; }));
    EXPECT_TRUE(output.device().isHeadphones);
    EXPECT_TRUE(waitFor([&] {
        scheduler.run();
        return changes > 0;
    }));
    SinkCapture capture({.sink = "second", .remote = server.remote()});
    ASSERT_TRUE(capture.waitUntilRunning());
    ASSERT_TRUE(waitFor([&] { return click() && capture.find(0, 0.01F); }));
}

TEST_F(PipeWireOutputTest, knowsAChangedDefaultDeviceBeforeItHasEverPlayed) {
    startWithSink();
    server.addSink("second", "device.bus=usb");
    output.open(source);
    server.chooseSink("second");
    ASSERT_TRUE(server.waitForDefaultSink("second"));
    ASSERT_TRUE(waitFor([&] { return output.device().name == "second"; }));
    EXPECT_TRUE(output.device().isHeadphones);
}

TEST_F(PipeWireOutputTest, knowsABluetoothDevice) {
    startWithSink("device.api=bluez5 device.bus=bluetooth device.form-factor=headphone");
    output.open(source);
    const OutputDeviceFacts facts = output.device();
    EXPECT_EQ(facts.name, "first");
    EXPECT_TRUE(facts.isBluetooth);
    EXPECT_TRUE(facts.isHeadphones);
    EXPECT_FALSE(facts.latencyMillis);
    EXPECT_FALSE(facts.bufferFrames);
    ASSERT_TRUE(click());
    // The null sink adds no delay of its own: what remains is one buffer.
    EXPECT_TRUE(waitFor([&] {
        const auto millis = output.device().latencyMillis;
        return millis && *millis > 2.6 && *millis < 10.0;
    }));
}

TEST_F(PipeWireOutputTest, knowsAnOrdinaryDevice) {
    startWithSink("device.bus=pci");
    output.open(source);
    EXPECT_FALSE(output.device().isBluetooth);
    EXPECT_FALSE(output.device().isHeadphones);
}

TEST_F(PipeWireOutputTest, noticesHeadphonesPluggedIntoTheCard) {
    server.startServer();
    server.startSessionManager();
    FakeSoundCard card(server.remote(), 4, "speaker");
    server.addSink("first", "device.id=" + std::to_string(card.id()) + " card.profile.device=4");
    ASSERT_TRUE(server.waitForDefaultSink("first"));
    output.open(source);
    ASSERT_TRUE(waitForDevice());
    EXPECT_FALSE(output.device().isHeadphones);
    scheduler.run();
    bool told = false;
    output.onConfigurationChange = [&] { told = true; };
    card.plug("headphones");
    EXPECT_TRUE(waitFor([this] { return output.device().isHeadphones; }));
    EXPECT_TRUE(waitFor([&] {
        scheduler.run();
        return told;
    }));
    card.plug("speaker");
    EXPECT_TRUE(waitFor([this] { return !output.device().isHeadphones; }));
}

TEST_F(PipeWireOutputTest, withoutAServerSaysSoAtOnce) {
    const auto begin = std::chrono::steady_clock::now();
    output.open(source);
    EXPECT_FALSE(output.requestStart());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 500ms);
    EXPECT_FALSE(output.isRunning());
    EXPECT_NE(output.problem().find("No sound server is running"), std::string::npos);
    EXPECT_EQ(output.device(), OutputDeviceFacts());
}

TEST_F(PipeWireOutputTest, withoutASessionManagerSaysSo) {
    server.startServer();
    server.addSink("first");
    output.open(source);
    EXPECT_FALSE(output.requestStart());
    EXPECT_NE(output.problem().find("without a session manager"), std::string::npos);
}

TEST_F(PipeWireOutputTest, withoutADeviceSaysSoAndPlaysOnceThereIsOne) {
    server.start();
    output.open(source);
    EXPECT_FALSE(output.requestStart());
    ASSERT_TRUE(
        waitFor([&] { return output.problem().find("no output device") != std::string::npos; }));
    EXPECT_FALSE(output.requestStart());
    server.addSink("first");
    ASSERT_TRUE(waitForDevice());
    EXPECT_TRUE(click());
}

TEST_F(PipeWireOutputTest, aServerStartedLaterIsFound) {
    output.open(source);
    ASSERT_FALSE(output.requestStart());
    startWithSink();
    ASSERT_TRUE(waitForDevice());
    EXPECT_TRUE(click());
}

TEST_F(PipeWireOutputTest, survivesTheEndOfTheServerAndPlaysTheFirstKeyAfterItsReturn) {
    startWithSink();
    output.open(source);
    ASSERT_TRUE(click());
    for (int round = 1; round <= 2; ++round) {
        server.kill();
        ASSERT_TRUE(waitFor([&] { return !output.problem().empty(); }));
        EXPECT_FALSE(output.isRunning());
        EXPECT_FALSE(output.requestStart());
        ASSERT_TRUE(waitFor([&] { return source.ended == round; }));
        startWithSink();
        // Nobody asks the output for anything until the device is there again.
        ASSERT_TRUE(waitForDevice());
        EXPECT_TRUE(click());
    }
}

TEST_F(PipeWireOutputTest, aLostDeviceRefusesKeysUntilAnotherOneIsThere) {
    startWithSink();
    output.open(source);
    ASSERT_TRUE(click());
    server.removeSink("first");
    ASSERT_TRUE(waitFor([&] { return !output.problem().empty(); }));
    EXPECT_FALSE(output.requestStart());
    server.addSink("second");
    ASSERT_TRUE(waitForDevice());
    EXPECT_TRUE(click());
}

TEST_F(PipeWireOutputTest, aServerThatDoesNotAnswerHoldsNobodyUp) {
    startWithSink();
    server.freeze();
    const auto begin = std::chrono::steady_clock::now();
    output.open(source);
    EXPECT_FALSE(output.requestStart());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 1500ms);
    EXPECT_NE(output.problem().find("does not answer"), std::string::npos);
    server.thaw();
    ASSERT_TRUE(waitForDevice());
    EXPECT_TRUE(click());
}

TEST_F(PipeWireOutputTest, aStalledServerDoesNotHoldUpAKeyWhileRunning) {
    startWithSink();
    output.open(source);
    ASSERT_TRUE(click());
    server.freeze();
    const auto begin = std::chrono::steady_clock::now();
    for (int key = 0; key < 1000; ++key) {
        EXPECT_TRUE(output.requestStart());
    }
    output.pause();
    EXPECT_TRUE(output.requestStart());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 100ms);
    server.thaw();
    EXPECT_TRUE(click());
}

TEST_F(PipeWireOutputTest, aKeyWhileRunningTakesNoLockAndCallsNothing) {
    startWithSink();
    output.open(source);
    ASSERT_TRUE(click());
    expectRealTimeSafe([this] { output.requestStart(); });
    expectRealTimeSafe([this] { (void)output.isRunning(); });
}

TEST_F(PipeWireOutputTest, afterCloseTheSourceIsLeftAlone) {
    startWithSink();
    output.open(source);
    ASSERT_TRUE(click());
    output.close();
    const std::uint64_t calls = output.renderCalls();
    EXPECT_FALSE(output.requestStart());
    EXPECT_TRUE(waitForSilenceOfCalls());
    EXPECT_EQ(output.renderCalls(), calls);
}

} // namespace
} // namespace vornic
