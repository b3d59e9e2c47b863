#include "Vornic/sound/SoundEngine.h"

#include "Vornic/sound/StaleKeys.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace vornic {
namespace {

std::shared_ptr<VoiceBank> bankOf(std::size_t frames, float level = 0.5F) {
    auto bank = std::make_shared<VoiceBank>();
    bank->add("key", {std::vector<float>(frames, level)});
    return bank;
}

float loudest(const FakeOutput::Block& block) {
    float result = 0.0F;
    for (std::size_t i = 0; i < block.left.size(); ++i) {
        result = std::max({result, std::abs(block.left[i]), std::abs(block.right[i])});
    }
    return result;
}

class SoundEngineTest : public ::testing::Test {
  protected:
    /// What a key does.
    bool key(float rate = 1.0F) { return key(engine.bank(), rate); }
    bool key(const std::shared_ptr<const VoiceBank>& bank, float rate = 1.0F) {
        if (bank == nullptr || !engine.ensureRunning()) {
            return false;
        }
        return engine.core().play(bank->pool("key").front(), 1.0F, 0.0F, rate, clock.nanos(),
                                  VoiceStage::none);
    }
    FakeOutput::Block render(std::int64_t frames = 128) {
        return output.render(frames, clock.nanos());
    }
    void tickAfter(double seconds) {
        clock.advance(seconds);
        engine.tick();
    }

    FakeOutput output;
    ManualClock clock;
    SoundEngine engine{output, clock, [](const auto& work) { work(); }};
};

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

TEST_F(SoundEngineTest, aReplacedBankStaysForThreeSecondsAndGoesWithTheNextTick) {
    std::weak_ptr<const VoiceBank> first;
    {
        const auto bank = bankOf(100);
        first = bank;
        engine.setBank(bank);
    }
    engine.setBank(bankOf(100));
    EXPECT_EQ(engine.retiredBanks(), 1U);
    tickAfter(3.0);
    EXPECT_FALSE(first.expired());
    tickAfter(0.001);
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(engine.retiredBanks(), 0U);
    EXPECT_NE(engine.bank(), nullptr);
}

TEST_F(SoundEngineTest, aBankThatIsSetTwiceIsFreedLikeAnyOther) {
    auto bank = bankOf(100);
    const std::weak_ptr<const VoiceBank> first = bank;
    engine.setBank(bank);
    engine.setBank(std::move(bank));
    EXPECT_EQ(engine.retiredBanks(), 0U);
    engine.setBank(bankOf(100));
    tickAfter(3.5);
    EXPECT_TRUE(first.expired());
}

TEST_F(SoundEngineTest, aBankThatComesBackIsFreedWhenItIsReplacedAgain) {
    auto bank = bankOf(100);
    const std::weak_ptr<const VoiceBank> first = bank;
    for (int round = 0; round < 3; ++round) {
        engine.setBank(bank);
        engine.setBank(bankOf(100));
        tickAfter(1.0);
    }
    bank.reset();
    tickAfter(1.5);
    EXPECT_FALSE(first.expired()) << "its time counts from the last replacement";
    tickAfter(1.0);
    EXPECT_TRUE(first.expired());
    tickAfter(3.5);
    EXPECT_EQ(engine.retiredBanks(), 0U);
}

TEST_F(SoundEngineTest, aBankThatCameBackIsNotFreedWhileItPlays) {
    auto bank = bankOf(100);
    const std::weak_ptr<const VoiceBank> first = bank;
    engine.setBank(bank);
    engine.setBank(bankOf(100));
    engine.setBank(std::move(bank));
    tickAfter(10.0);
    EXPECT_FALSE(first.expired());
    EXPECT_TRUE(key());
}

TEST_F(SoundEngineTest, nothingIsRetiredWhenThereWasNoBank) {
    engine.setBank(nullptr);
    engine.setBank(bankOf(100));
    EXPECT_EQ(engine.retiredBanks(), 0U);
    engine.setBank(nullptr);
    EXPECT_EQ(engine.retiredBanks(), 1U);
    EXPECT_EQ(engine.bank(), nullptr);
}

TEST_F(SoundEngineTest, aVoiceThatOutlastsThreeSecondsKeepsItsBank) {
    std::weak_ptr<const VoiceBank> first;
    {
        const auto bank = bankOf(48000);
        first = bank;
        engine.setBank(bank);
    }
    key(1.0F / 16.0F); // 16 s
    engine.setBank(bankOf(100));
    for (int second = 0; second < 15; ++second) {
        render(48000);
        tickAfter(1.0);
        ASSERT_FALSE(first.expired()) << second;
    }
    render(48000);
    render(48000);
    tickAfter(1.0);
    EXPECT_TRUE(first.expired());
}

TEST_F(SoundEngineTest, aVoiceFrozenByAPauseKeepsItsBankUntilItHasEnded) {
    std::weak_ptr<const VoiceBank> first;
    {
        const auto bank = bankOf(1000);
        first = bank;
        engine.setBank(bank);
    }
    key();
    render();
    engine.setBank(bankOf(100));
    tickAfter(31.0);
    ASSERT_FALSE(output.isRunning());
    tickAfter(100.0);
    EXPECT_FALSE(first.expired());
    key();
    render(2000);
    tickAfter(1.0);
    EXPECT_TRUE(first.expired());
}

TEST_F(SoundEngineTest, aQueuedKeyKeepsItsBank) {
    std::weak_ptr<const VoiceBank> first;
    {
        const auto bank = bankOf(1000);
        first = bank;
        engine.setBank(bank);
    }
    key();
    engine.setBank(bankOf(100));
    tickAfter(5.0);
    EXPECT_FALSE(first.expired());
}

TEST_F(SoundEngineTest, aKeyThreadThatStillHoldsABankKeepsItAndSoDoesWhatItPlays) {
    engine.setBank(bankOf(1000));
    auto held = engine.bank();
    const std::weak_ptr<const VoiceBank> first = held;
    engine.setBank(bankOf(100));
    tickAfter(5.0);
    EXPECT_FALSE(first.expired());
    // Played after the tick that saw three seconds over, and only then let go.
    engine.ensureRunning();
    engine.core().play(held->pool("key").front(), 1.0F, 0.0F, 1.0F, 0, VoiceStage::none);
    held.reset();
    tickAfter(1.0);
    EXPECT_FALSE(first.expired());
    render(2000);
    tickAfter(1.0);
    EXPECT_TRUE(first.expired());
}

TEST_F(SoundEngineTest, banksAreReplacedWhileKeysPlayFromThem) {
    // Every frame of a bank has its value, so that freed or foreign memory would be heard.
    std::atomic<bool> stop{false};
    std::mutex exchange;
    std::shared_ptr<const VoiceBank> handed;
    const auto use = [&](std::shared_ptr<const VoiceBank> bank) {
        engine.setBank(bank);
        const std::scoped_lock lock(exchange);
        handed.swap(bank);
    };
    use(bankOf(500, 0.25F));
    std::thread keys([&] {
        while (!stop) {
            const auto held = [&] {
                const std::scoped_lock lock(exchange);
                return handed;
            }();
            key(held);
        }
    });
    std::thread audio([&] {
        while (!stop) {
            render();
        }
    });
    for (int change = 0; change < 100; ++change) {
        const auto started = engine.core().keysStarted();
        EXPECT_TRUE(waitFor([&] { return engine.core().keysStarted() > started + 10; }));
        use(bankOf(500, 0.25F));
        tickAfter(2.0);
    }
    stop = true;
    keys.join();
    audio.join();
    for (int block = 0; block < 10; ++block) {
        render();
    }
    tickAfter(4.0);
    EXPECT_EQ(engine.retiredBanks(), 0U);
}

TEST_F(SoundEngineTest, whatWaitedWhenTheServerEndedIsNotHeardLater) {
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

TEST_F(SoundEngineTest, theEndOfTheServerSettlesTheBanksOfItsVoices) {
    engine.setBank(bankOf(100000));
    key();
    render();
    engine.setBank(nullptr);
    tickAfter(5.0);
    EXPECT_EQ(engine.retiredBanks(), 1U);
    output.lose();
    tickAfter(1.0);
    EXPECT_EQ(engine.retiredBanks(), 0U);
}

TEST_F(SoundEngineTest, keysThatWaitForADeviceToStartAllSound) {
    engine.setBank(bankOf(1000));
    key();
    key();
    clock.advance(2.0); // a Bluetooth link takes its time
    key();
    render();
    EXPECT_EQ(engine.core().keysStarted(), 3);
    EXPECT_EQ(engine.core().eventsDropped(), 0);
}

TEST_F(SoundEngineTest, keysThatWaitForAPausedDeviceToWakeAllSound) {
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

TEST_F(SoundEngineTest, keysThatWaitForANewDeviceAllSound) {
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

TEST_F(SoundEngineTest, keysSoundAfterAServerCameBackAndTookLongToStart) {
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

TEST_F(SoundEngineTest, keysSoundAtOnceWhenTheOutputTakesAMomentToStart) {
    engine.setBank(bankOf(1000));
    key();
    clock.advance(0.2);
    key();
    render();
    EXPECT_EQ(engine.core().keysStarted(), 2);
}

TEST_F(SoundEngineTest, keysThatCameDuringAStallAreDroppedWhenItIsOver) {
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

TEST_F(SoundEngineTest, withoutAnInterruptionALateKeyIsHeard) {
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
