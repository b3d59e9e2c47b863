#include "Vornic/sound/SoundEngine.h"

#include "tests/Vornic/sound/SoundEngineFixture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <limits>
#include <optional>
#include <thread>
#include <vector>

namespace vornic {
namespace {

class SoundEngineTest : public SoundEngineFixture {};

TEST_F(SoundEngineTest, opensItsOutputPausedAndClosesItAtTheEnd) {
    std::optional<SoundEngine> other;
    FakeOutput otherOutput;
    other.emplace(otherOutput, clock, [](const auto& work) { work(); });
    EXPECT_TRUE(otherOutput.isOpen());
    EXPECT_FALSE(otherOutput.isRunning());
    other.reset();
    EXPECT_FALSE(otherOutput.isOpen());
    EXPECT_EQ(otherOutput.onConfigurationChange, nullptr);
}

TEST_F(SoundEngineTest, theFirstKeyStartsTheOutput) {
    engine.tick();
    EXPECT_EQ(output.startRequests, 0);
    EXPECT_TRUE(engine.ensureRunning());
    EXPECT_TRUE(output.isRunning());
}

TEST_F(SoundEngineTest, aKey31SecondsAfterTheLastFindsTheOutputPausedAndRestartsIt) {
    engine.ensureRunning();
    for (int second = 1; second <= 30; ++second) {
        tickAfter(1.0);
        ASSERT_TRUE(output.isRunning()) << second;
    }
    tickAfter(1.0);
    EXPECT_FALSE(output.isRunning());
    EXPECT_EQ(output.pauses, 1);
    EXPECT_TRUE(engine.ensureRunning());
    EXPECT_TRUE(output.isRunning());
    tickAfter(1.0);
    EXPECT_TRUE(output.isRunning());
}

TEST_F(SoundEngineTest, onBluetoothTheOutputRunsOnFor300Seconds) {
    output.facts.isBluetooth = true;
    engine.ensureRunning();
    tickAfter(300.0);
    EXPECT_TRUE(output.isRunning());
    tickAfter(1.0);
    EXPECT_FALSE(output.isRunning());
}

TEST_F(SoundEngineTest, idleLimitsCanBeGiven) {
    FakeOutput otherOutput;
    SoundEngine other(otherOutput, clock, [](const auto& work) { work(); },
                      {.idleLimits = {.wired = 2.0, .bluetooth = 4.0}, .raw = false});
    other.ensureRunning();
    clock.advance(2.5);
    other.tick();
    EXPECT_FALSE(otherOutput.isRunning());
    otherOutput.facts.isBluetooth = true;
    other.ensureRunning();
    clock.advance(2.5);
    other.tick();
    EXPECT_TRUE(otherOutput.isRunning());
    clock.advance(2.5);
    other.tick();
    EXPECT_FALSE(otherOutput.isRunning());
}

TEST_F(SoundEngineTest, withoutAServerAKeyIsSilentAndTheNextOneTriesAgain) {
    output.available = false;
    EXPECT_FALSE(engine.ensureRunning());
    EXPECT_FALSE(engine.ensureRunning());
    EXPECT_EQ(output.startRequests, 2);
    output.available = true;
    EXPECT_TRUE(engine.ensureRunning());
}

TEST_F(SoundEngineTest, aKeyThatComesWhileTheIdleTickPausesStartsTheOutputAgain) {
    engine.ensureRunning();
    clock.advance(31.0);
    // The key has stored its time, and saw the output still running, before the pause took effect.
    output.afterPause = [&] {
        output.running = true;
        engine.ensureRunning();
        output.running = false;
    };
    engine.tick();
    EXPECT_TRUE(output.isRunning());
}

TEST_F(SoundEngineTest, anIdleTickThatComesWhileAKeyFindsTheOutputRunningDoesNotPauseIt) {
    engine.ensureRunning();
    clock.advance(31.0);
    output.afterStartRequest = [&] { engine.tick(); };
    engine.ensureRunning();
    EXPECT_TRUE(output.isRunning());
}

TEST_F(SoundEngineTest, keysAndIdleTicksAtFullSpeedLeaveNoKeyWithAPausedOutput) {
    // In every round the last key is out of date when a tick and a new key meet. Whichever comes
    // first, when both are through the output runs.
    constexpr int rounds = 5000;
    std::atomic<int> round{0};
    std::atomic<int> done{0};
    std::thread keys([&] {
        for (int i = 1; i <= rounds; ++i) {
            while (round.load() < i) {
                std::this_thread::yield();
            }
            engine.ensureRunning();
            done = i;
        }
    });
    int lost = 0;
    for (int i = 1; i <= rounds; ++i) {
        clock.advance(31.0);
        round = i;
        engine.tick();
        while (done.load() < i) {
            std::this_thread::yield();
        }
        lost += output.isRunning() ? 0 : 1;
    }
    keys.join();
    EXPECT_EQ(lost, 0);
}

TEST_F(SoundEngineTest, aDeviceChangeSoonAfterAKeyGoesOnPlaying) {
    int told = 0;
    engine.onOutputChange = [&] { ++told; };
    engine.ensureRunning();
    clock.advance(29.0);
    output.running = false;
    output.onConfigurationChange();
    EXPECT_TRUE(output.isRunning());
    EXPECT_EQ(told, 1);
}

TEST_F(SoundEngineTest, aDeviceChangeWhileIdleForLongerThanTheLimitStartsNothing) {
    engine.ensureRunning();
    tickAfter(31.0);
    ASSERT_FALSE(output.isRunning());
    output.onConfigurationChange();
    EXPECT_FALSE(output.isRunning());
    // At the limit itself it is too late as well.
    engine.ensureRunning();
    clock.advance(30.0);
    output.running = false;
    output.onConfigurationChange();
    EXPECT_FALSE(output.isRunning());
}

TEST_F(SoundEngineTest, aDeviceChangeBeforeTheFirstKeyStartsNothing) {
    output.onConfigurationChange();
    EXPECT_FALSE(output.isRunning());
}

TEST_F(SoundEngineTest, playsTheCurrentBankThroughTheVolume) {
    EXPECT_EQ(engine.bank(), nullptr);
    EXPECT_FALSE(key());
    engine.setBank(bankOf(1000));
    EXPECT_TRUE(key());
    EXPECT_NEAR(loudest(render()), 0.5F * 0.7F, 1e-6F);
}

TEST_F(SoundEngineTest, theVolumeIsLimitedAndAValueThatIsNotFiniteIsRefused) {
    EXPECT_EQ(engine.volume(), 0.7);
    engine.setVolume(0.25);
    engine.setVolume(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(engine.volume(), 0.25);
    engine.setVolume(std::numeric_limits<double>::infinity());
    EXPECT_EQ(engine.volume(), 0.25);
    engine.setVolume(1.5);
    EXPECT_EQ(engine.volume(), 1.0);
    engine.setVolume(-0.5);
    EXPECT_EQ(engine.volume(), 0.0);
    engine.setVolume(0.25);
    engine.setBank(bankOf(1000));
    key();
    EXPECT_NEAR(loudest(render()), 0.125F, 1e-6F);
}

TEST_F(SoundEngineTest, theLimiterComesBeforeTheVolume) {
    engine.setVolume(0.5);
    engine.setBank(bankOf(1000, 4.0F));
    key();
    EXPECT_LE(loudest(render()), 0.5F * Limiter::ceiling + 1e-6F);
}

TEST_F(SoundEngineTest, rawSoundIsTheSamplersOwn) {
    FakeOutput otherOutput;
    SoundEngine raw(otherOutput, clock, [](const auto& work) { work(); },
                    {.idleLimits = {}, .raw = true});
    raw.setRoom(Room::studio);
    const auto bank = bankOf(1000, 4.0F);
    raw.ensureRunning();
    raw.core().play(bank->pool("key").front(), 1.0F, 0.0F, 1.0F, 0, VoiceStage::none);
    const auto block = otherOutput.render(128, clock.nanos());
    EXPECT_TRUE(std::all_of(block.left.begin(), block.left.end(),
                            [](float sample) { return std::abs(sample - 4.0F) < 1e-5F; }));
}

TEST_F(SoundEngineTest, everyRoomButTheDryOneIsHeardAfterTheKeyIsOver) {
    engine.setBank(bankOf(64));
    const auto tailIn = [&](Room room) {
        engine.setRoom(room);
        for (int block = 0; block < 1000; ++block) { // the old room rings out
            render();
        }
        key();
        render();
        float tail = 0.0F;
        for (int block = 0; block < 20; ++block) {
            tail = std::max(tail, loudest(render()));
        }
        return tail;
    };
    EXPECT_EQ(tailIn(Room::dry), 0.0F);
    EXPECT_GT(tailIn(Room::studio), 1e-4F);
    EXPECT_EQ(tailIn(Room::dry), 0.0F);
    EXPECT_GT(tailIn(Room::desk), 1e-4F);
    EXPECT_GT(tailIn(Room::wood), 1e-4F);
}

TEST_F(SoundEngineTest, theReflectionReachesTheSamplerAndNothingButNumbersDoes) {
    engine.setReflection(0.2F, 0.5F);
    EXPECT_EQ(engine.core().reflection(), 0.2F);
    EXPECT_EQ(engine.core().reflectionDamp(), 0.5F);
    engine.setReflection(std::numeric_limits<float>::quiet_NaN(), 0.1F);
    engine.setReflection(0.1F, std::numeric_limits<float>::infinity());
    EXPECT_EQ(engine.core().reflection(), 0.2F);
    EXPECT_EQ(engine.core().reflectionDamp(), 0.5F);
}

TEST_F(SoundEngineTest, anAuditionSoundsOnceAndStartsTheOutput) {
    engine.audition(std::vector<float>(100, 0.5F), 0.5F);
    EXPECT_TRUE(output.isRunning());
    EXPECT_EQ(engine.core().pushedEvents(), 1U);
    EXPECT_EQ(engine.retiredBanks(), 1U);
    EXPECT_NEAR(loudest(render(200)), 0.25F * 0.7F, 1e-6F);
    EXPECT_EQ(loudest(render()), 0.0F);
    EXPECT_EQ(engine.bank(), nullptr);
    tickAfter(3.5);
    EXPECT_EQ(engine.retiredBanks(), 0U);
}

TEST_F(SoundEngineTest, anAuditionOfLessThanTwoFramesPlaysNothingAndStartsNothing) {
    engine.audition({}, 1.0F);
    engine.audition(std::vector<float>{0.5F}, 1.0F);
    engine.audition(std::vector<float>(100, 0.5F), std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(output.startRequests, 0);
    EXPECT_EQ(engine.retiredBanks(), 0U);
    EXPECT_EQ(engine.core().pushedEvents(), 0U);
}

TEST_F(SoundEngineTest, anAuditionWithoutAServerPlaysNothing) {
    output.available = false;
    engine.audition(std::vector<float>(100, 0.5F), 1.0F);
    EXPECT_EQ(engine.retiredBanks(), 0U);
    EXPECT_EQ(engine.core().pushedEvents(), 0U);
}

TEST_F(SoundEngineTest, anAuditionLeavesNothingBehindThatIsNotANumber) {
    engine.setRoom(Room::studio);
    engine.setReflection(0.2F, 0.35F);
    std::vector<float> samples(100, 0.5F);
    samples[50] = std::numeric_limits<float>::quiet_NaN();
    samples[51] = std::numeric_limits<float>::infinity();
    engine.audition(samples, 1.0F);
    for (int block = 0; block < 50; ++block) {
        const auto sound = render();
        ASSERT_TRUE(std::all_of(sound.left.begin(), sound.left.end(),
                                [](float sample) { return std::isfinite(sample); }));
    }
}

TEST_F(SoundEngineTest, anAuditionIsHandedToTheKeyThread) {
    std::vector<std::function<void()>> waiting;
    FakeOutput otherOutput;
    SoundEngine other(otherOutput, clock, [&](auto work) { waiting.push_back(std::move(work)); });
    other.audition(std::vector<float>(100, 0.5F), 1.0F);
    EXPECT_EQ(other.core().pushedEvents(), 0U);
    // However long the key thread takes, the sound waits for it.
    clock.advance(10.0);
    other.tick();
    EXPECT_EQ(other.retiredBanks(), 1U);
    waiting.front()();
    EXPECT_EQ(other.core().pushedEvents(), 1U);
    waiting.clear();
    other.tick();
    EXPECT_EQ(other.retiredBanks(), 1U) << "freed under a queued voice";
    otherOutput.render(200, clock.nanos());
    other.tick();
    EXPECT_EQ(other.retiredBanks(), 0U);
}

TEST_F(SoundEngineTest, tellsTheLoudestSampleSinceItWasAsked) {
    engine.setBank(bankOf(4800));
    ASSERT_TRUE(key());
    const float first = loudest(render());
    const float second = loudest(render());
    EXPECT_GT(first, 0.0F);
    EXPECT_EQ(engine.takePeak(), std::max(first, second));
    EXPECT_EQ(engine.takePeak(), 0.0F);
}

} // namespace
} // namespace vornic
