#include "Vornic/sound/StaleKeys.h"
#include "tests/Vornic/sound/SoundEngineFixture.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

class LateKeysTest : public SoundEngineFixture {};

TEST_F(LateKeysTest, whatWaitedWhenTheServerEndedIsNotHeardLater) {
    engine.setBank(bankOf(100000));
    key();
    render();
    key();
    output.lose();
    EXPECT_EQ(engine.core().activeVoices(), 0);
    EXPECT_EQ(engine.core().settledEvents(), engine.core().pushedEvents());
    EXPECT_FALSE(key());
    output.available = true;
    ASSERT_TRUE(engine.ensureRunning());
    EXPECT_EQ(loudest(render()), 0.0F);
    EXPECT_EQ(engine.core().keysStarted(), 1);
    EXPECT_TRUE(key());
    EXPECT_GT(loudest(render()), 0.1F);
}

TEST_F(LateKeysTest, keysThatWaitForADeviceToStartAllSound) {
    engine.setBank(bankOf(1000));
    key();
    key();
    clock.advance(2.0); // a Bluetooth link takes its time
    key();
    render();
    EXPECT_EQ(engine.core().keysStarted(), 3);
    EXPECT_EQ(engine.core().eventsDropped(), 0);
}

TEST_F(LateKeysTest, keysThatWaitForAPausedDeviceToWakeAllSound) {
    engine.setBank(bankOf(1000));
    key();
    render(2000);
    tickAfter(31.0);
    ASSERT_FALSE(output.isRunning());
    render(); // one more may be on its way when the output is paused
    clock.advance(5.0);
    key();
    clock.advance(2.0);
    key();
    render();
    EXPECT_EQ(engine.core().keysStarted(), 3);
    EXPECT_EQ(engine.core().eventsStale(), 0);
}

TEST_F(LateKeysTest, keysThatWaitForANewDeviceAllSound) {
    engine.setBank(bankOf(1000));
    key();
    render(2000);
    clock.advance(0.1);
    output.onConfigurationChange();
    key();
    clock.advance(1.0);
    render();
    EXPECT_EQ(engine.core().keysStarted(), 2);
}

TEST_F(LateKeysTest, keysSoundAfterAServerCameBackAndTookLongToStart) {
    engine.setBank(bankOf(1000));
    key();
    render(2000);
    output.lose();
    output.available = true;
    clock.advance(3.0);
    key();
    clock.advance(1.0);
    render();
    EXPECT_EQ(engine.core().keysStarted(), 2);
}

TEST_F(LateKeysTest, keysSoundAtOnceWhenTheOutputTakesAMomentToStart) {
    engine.setBank(bankOf(1000));
    key();
    clock.advance(0.2);
    key();
    render();
    EXPECT_EQ(engine.core().keysStarted(), 2);
}

TEST_F(LateKeysTest, keysThatCameDuringAStallAreDroppedWhenItIsOver) {
    engine.setBank(bankOf(1000));
    engine.ensureRunning();
    render();
    for (int i = 0; i < 20; ++i) {
        clock.advance(0.1);
        key();
    }
    render();
    EXPECT_EQ(engine.core().keysStarted(), 3) << "those of the last quarter of a second";
    EXPECT_EQ(engine.core().eventsStale(), 17);
}

TEST_F(LateKeysTest, withoutAnInterruptionALateKeyIsHeard) {
    engine.setBank(bankOf(1000));
    engine.ensureRunning();
    const auto bank = engine.bank();
    const std::uint64_t pressed = clock.nanos();
    for (int block = 0; block < 200; ++block) {
        clock.advance(128.0 / 48000.0);
        render();
    }
    engine.core().play(bank->pool("key").front(), 1.0F, 0.0F, 1.0F, pressed, VoiceStage::none);
    render();
    EXPECT_EQ(engine.core().keysStarted(), 1);
}

TEST(StaleKeys, onlyAnInterruptionMakesKeysStale) {
    constexpr std::uint64_t now = 10'000'000'000;
    constexpr std::uint64_t limit = StaleKeys::limit;
    EXPECT_EQ(StaleKeys::before(now - limit - 1, 0, now), now - limit);
    EXPECT_EQ(StaleKeys::before(now - limit, 0, now), 0U);
    EXPECT_EQ(StaleKeys::before(now - 2'666'666, 0, now), 0U);
}

TEST(StaleKeys, aStartMakesNoneStaleThatCameSinceItWasAskedFor) {
    constexpr std::uint64_t now = 10'000'000'000;
    EXPECT_EQ(StaleKeys::before(0, 0, now), 0U) << "the first call of a stream";
    constexpr std::uint64_t asked = now - 3'000'000'000;
    EXPECT_EQ(StaleKeys::before(asked - 5'000'000'000, asked, now), asked - StaleKeys::limit);
    EXPECT_EQ(StaleKeys::before(asked + 1'000'000'000, asked, now), now - StaleKeys::limit)
        << "it had started before the interruption";
}

TEST(StaleKeys, anUnknownTimeOrAClockThatStepsBackMakesNoneStale) {
    EXPECT_EQ(StaleKeys::before(0, 0, 0), 0U);
    EXPECT_EQ(StaleKeys::before(5'000'000'000, 0, 0), 0U);
    EXPECT_EQ(StaleKeys::before(5'000'000'000, 0, 4'000'000'000), 0U);
    EXPECT_EQ(StaleKeys::before(1, 1, StaleKeys::limit), 0U);
}

} // namespace
} // namespace vornic
