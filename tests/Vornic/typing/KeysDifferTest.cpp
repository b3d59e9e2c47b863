// A board whose keys differ, as those of a real keyboard do.

#include "VornicCore/keys/KeyDifference.h"
#include "tests/Vornic/typing/KeystrokeFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace vornic {
namespace {

class KeysDifferTest : public KeystrokeFixture {
  protected:
    /// Twelve variations of each stroke, each a constant of its own.
    KeysDifferTest() {
        std::vector<std::vector<float>> variations;
        for (int i = 1; i <= 12; ++i) {
            variations.emplace_back(4800, 0.001f * static_cast<float>(i));
        }
        auto fresh = std::make_shared<VoiceBank>();
        for (const Velocity velocity : {Velocity::soft, Velocity::medium, Velocity::hard}) {
            fresh->add(VoiceBank::key("keys", false, velocity), variations);
        }
        fresh->add(VoiceBank::releaseKey("keys"), {std::vector<float>(4800, 0.02f)});
        bank = fresh;
    }

    static Board differing(double amount) {
        Board board = plainBoard();
        board.feel.keysDiffer = amount;
        board.releaseByDefault = true;
        return board;
    }

    /// The level of the release of `code`, which no pace changes.
    double releaseOf(std::int64_t code) {
        engine.core().clear();
        driver.key(code, false, 0);
        const double level = gainOf(heard(), 0.02f);
        engine.core().clear();
        return level;
    }

    SplitMix64 twin{42}; // of the driver's
};

TEST_F(KeysDifferTest, withoutItAllKeysAreEquallyLoud) {
    useBoard(differing(0));
    EXPECT_NEAR(releaseOf(letterF), releaseOf(4), 1e-4);
}

TEST_F(KeysDifferTest, aKeyHasALevelOfItsOwn) {
    for (const double amount : {0.5, 1.0, 7.0}) {
        useBoard(differing(amount));
        for (const std::int64_t code : {0, 3, 4, 12, 40}) {
            const double db = KeyDifference::levelDb(code) * std::min(amount, 1.0);
            EXPECT_NEAR(20 * std::log10(releaseOf(code) / 0.8), db, 0.01) << code;
        }
    }
}

TEST_F(KeysDifferTest, aValueThatIsNoneDoesNothing) {
    for (const double amount : {-1.0, std::numeric_limits<double>::quiet_NaN()}) {
        useBoard(differing(amount));
        EXPECT_NEAR(releaseOf(letterF), 0.8, 1e-4);
    }
}

TEST_F(KeysDifferTest, aKeyPrefersVariationsOfItsOwn) {
    for (const double amount : {0.4, 1.0}) {
        const Board board = differing(amount);
        useBoard(board);
        for (int key = 0; key < 20; ++key) {
            pressAfterPause(letterF);
            const StrokeShape shape = TypingDynamics::shape(TypingDynamics{}.speed(), true, twin);
            const auto pick = static_cast<std::size_t>(twin.next(12));
            const double chance = twin.uniform(0.0, 1.0);
            const auto variation = KeyDifference::variation(letterF, amount, chance, pick, 12);
            const double db = amount * KeyDifference::levelDb(letterF);
            const double gain = ((static_cast<double>(shape.gain) - 1.0) * 0.3 + 1.0) *
                                std::pow(10.0, db / 20) * static_cast<double>(variation + 1);
            EXPECT_NEAR(gainOf(heard(), 0.001f) / gain, 1.0, 1e-3);
            engine.core().clear();
        }
    }
}

TEST_F(KeysDifferTest, aBoardOfEqualKeysDrawsWhatItAlwaysDid) {
    useBoard(differing(0));
    for (int key = 0; key < 20; ++key) {
        pressAfterPause(letterF);
        const StrokeShape shape = TypingDynamics::shape(TypingDynamics{}.speed(), true, twin);
        const auto pick = twin.next(12);
        const double gain = (static_cast<double>(shape.gain) - 1.0) * 0.3 + 1.0;
        EXPECT_NEAR(gainOf(heard(), 0.001f), gain * static_cast<double>(pick + 1), 1e-3);
        engine.core().clear();
    }
}

} // namespace
} // namespace vornic
