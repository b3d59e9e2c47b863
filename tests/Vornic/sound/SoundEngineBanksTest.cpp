#include "tests/Vornic/sound/SoundEngineFixture.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>

namespace vornic {
namespace {

class SoundEngineBanksTest : public SoundEngineFixture {};

TEST_F(SoundEngineBanksTest, aReplacedBankStaysForThreeSecondsAndGoesWithTheNextTick) {
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

TEST_F(SoundEngineBanksTest, aBankThatIsSetTwiceIsFreedLikeAnyOther) {
    auto bank = bankOf(100);
    const std::weak_ptr<const VoiceBank> first = bank;
    engine.setBank(bank);
    engine.setBank(std::move(bank));
    EXPECT_EQ(engine.retiredBanks(), 0U);
    engine.setBank(bankOf(100));
    tickAfter(3.5);
    EXPECT_TRUE(first.expired());
}

TEST_F(SoundEngineBanksTest, aBankThatComesBackIsFreedWhenItIsReplacedAgain) {
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

TEST_F(SoundEngineBanksTest, aBankThatCameBackIsNotFreedWhileItPlays) {
    auto bank = bankOf(100);
    const std::weak_ptr<const VoiceBank> first = bank;
    engine.setBank(bank);
    engine.setBank(bankOf(100));
    engine.setBank(std::move(bank));
    tickAfter(10.0);
    EXPECT_FALSE(first.expired());
    EXPECT_TRUE(key());
}

TEST_F(SoundEngineBanksTest, nothingIsRetiredWhenThereWasNoBank) {
    engine.setBank(nullptr);
    engine.setBank(bankOf(100));
    EXPECT_EQ(engine.retiredBanks(), 0U);
    engine.setBank(nullptr);
    EXPECT_EQ(engine.retiredBanks(), 1U);
    EXPECT_EQ(engine.bank(), nullptr);
}

TEST_F(SoundEngineBanksTest, aVoiceThatOutlastsThreeSecondsKeepsItsBank) {
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

TEST_F(SoundEngineBanksTest, aVoiceFrozenByAPauseKeepsItsBankUntilItHasEnded) {
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

TEST_F(SoundEngineBanksTest, aQueuedKeyKeepsItsBank) {
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

TEST_F(SoundEngineBanksTest, aKeyThreadThatStillHoldsABankKeepsItAndSoDoesWhatItPlays) {
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

TEST_F(SoundEngineBanksTest, banksAreReplacedWhileKeysPlayFromThem) {
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

TEST_F(SoundEngineBanksTest, theEndOfTheServerSettlesTheBanksOfItsVoices) {
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

} // namespace
} // namespace vornic
