#include "Vornic/sound/SoundEngine.h"

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/sound/PipeWireOutput.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/live/SinkCapture.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <vector>

namespace vornic {
namespace {

/// The engine with the real output, on a sound server of its own.
class LiveSoundEngine : public ::testing::Test {
  protected:
    void startServer() {
        server.startServer();
        server.addSink("first");
        server.startSessionManager();
        ASSERT_TRUE(server.waitForDefaultSink("first"));
    }
    std::unique_ptr<SoundEngine> makeEngine(double idleLimit = 30.0) {
        auto engine = std::make_unique<SoundEngine>(
            output, clock, [](const auto& work) { work(); },
            SoundEngine::Options{.idleLimits = {.wired = idleLimit, .bluetooth = idleLimit},
                                 .raw = false});
        auto bank = std::make_shared<VoiceBank>();
        bank->add("key", {std::vector<float>(480, 0.5F)});
        engine->setBank(bank);
        return engine;
    }
    bool key(SoundEngine& engine) const {
        const auto bank = engine.bank();
        return engine.ensureRunning() && engine.core().play(bank->pool("key").front(), 1.0F, 0.0F,
                                                            1.0F, clock.nanos(), VoiceStage::none);
    }
    /// Sounds that begin after 20 ms of silence or more: a busy machine can tear a hole of a block
    /// into one.
    static std::size_t onsets(const SinkCapture& capture) {
        std::size_t count = 0;
        std::size_t silent = 960;
        for (std::size_t frame = 0; frame < capture.frames(); ++frame) {
            const bool loud = std::abs(capture.left(frame)) > 0.01F;
            count += loud && silent >= 960 ? std::size_t{1} : 0;
            silent = loud ? 0 : silent + 1;
        }
        return count;
    }

    PrivateSoundServer server;
    QueueScheduler scheduler;
    MonotonicClock clock;
    SoundServer connection{server.remote()};
    PipeWireOutput output{scheduler, connection, "Vornic test"};
};

TEST_F(LiveSoundEngine, aKeyIsHeardInTheSinkAtTheUsersVolume) {
    startServer();
    const SinkCapture capture({.sink = "first", .remote = server.remote()});
    const auto engine = makeEngine();
    ASSERT_TRUE(capture.waitUntilRunning());
    // A busy machine can lose a block; it does not lose one every time.
    std::size_t frames = 0;
    for (int attempt = 0; attempt < 5 && frames != 479; ++attempt) {
        const std::size_t from = capture.frames();
        ASSERT_TRUE(key(*engine));
        const auto onset = capture.waitFor(from, 0.01F);
        ASSERT_TRUE(onset.has_value());
        ASSERT_TRUE(waitFor([&] { return capture.frames() > *onset + 960; }));
        frames = 0;
        for (std::size_t frame = *onset; frame < *onset + 960; ++frame) {
            frames += std::abs(capture.left(frame) - 0.35F) < 1e-5F ? std::size_t{1} : 0;
        }
    }
    EXPECT_EQ(frames, 479U) << "one less than the sample has, at the level times the volume";
}

TEST_F(LiveSoundEngine, theIdleTickEndsTheRenderCallsAndTheNextKeyIsHeard) {
    startServer();
    const auto engine = makeEngine(0.05);
    ASSERT_TRUE(key(*engine));
    ASSERT_TRUE(waitFor([&] { return engine->core().keysStarted() == 1; }));
    ASSERT_TRUE(waitFor([&] {
        engine->tick();
        return !output.isRunning();
    }));
    std::uint64_t calls = output.renderCalls();
    std::uint64_t since = clock.nanos();
    EXPECT_TRUE(waitFor([&] {
        if (output.renderCalls() != calls) {
            calls = output.renderCalls();
            since = clock.nanos();
        }
        return clock.nanos() - since > 100'000'000;
    }));
    ASSERT_TRUE(key(*engine));
    EXPECT_TRUE(waitFor([&] { return engine->core().keysStarted() == 2; }));
}

TEST_F(LiveSoundEngine, theEndOfTheServerLosesNoKeyAfterItsReturnAndBringsNoneBack) {
    startServer();
    const auto engine = makeEngine();
    ASSERT_TRUE(key(*engine));
    ASSERT_TRUE(waitFor([&] { return engine->core().keysStarted() == 1; }));
    server.freeze();
    // Nothing is heard of these: they wait in vain until their server dies.
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(key(*engine));
    }
    server.kill();
    ASSERT_TRUE(waitFor([&] { return !output.problem().empty(); }));
    EXPECT_FALSE(key(*engine));
    ASSERT_TRUE(
        waitFor([&] { return engine->core().settledEvents() == engine->core().pushedEvents(); }));
    const auto started = engine->core().keysStarted();

    startServer();
    ASSERT_TRUE(waitFor([&] { return output.problem().empty(); }));
    // The engine was used a moment ago, and so it runs again by itself.
    ASSERT_TRUE(waitFor([&] {
        scheduler.run();
        return output.isRunning();
    }));
    const SinkCapture capture({.sink = "first", .remote = server.remote()});
    ASSERT_TRUE(capture.waitUntilRunning());
    ASSERT_TRUE(key(*engine));
    ASSERT_TRUE(waitFor([&] { return engine->core().keysStarted() > started; }));
    ASSERT_TRUE(capture.waitFor(0, 0.01F).has_value());
    const std::size_t end = capture.frames() + 4800;
    ASSERT_TRUE(waitFor([&] { return capture.frames() >= end; }));
    EXPECT_EQ(engine->core().keysStarted(), started + 1);
    EXPECT_EQ(onsets(capture), 1U);
}

TEST_F(LiveSoundEngine, keysOfALongStallAreDropped) {
    startServer();
    const auto engine = makeEngine();
    ASSERT_TRUE(key(*engine));
    ASSERT_TRUE(waitFor([&] { return engine->core().keysStarted() == 1; }));
    server.freeze();
    const std::uint64_t calls = output.renderCalls();
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(key(*engine));
    }
    const std::uint64_t pressed = clock.nanos();
    ASSERT_TRUE(waitFor([&] { return clock.nanos() - pressed > 500'000'000; }));
    server.thaw();
    ASSERT_TRUE(waitFor([&] { return output.renderCalls() > calls + 10; }));
    EXPECT_EQ(engine->core().settledEvents(), engine->core().pushedEvents());
    // One render call may have been under way when the server stopped.
    EXPECT_GE(engine->core().eventsDropped(), 19);
}

} // namespace
} // namespace vornic
