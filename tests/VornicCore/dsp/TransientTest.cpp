#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vornic {
namespace {

// The followers written out once more, sample by sample.
struct Levels {
    double fast = 0.0;
    double slow = 0.0;

    void follow(double a) {
        const auto k = [](double ms) { return 1.0 - std::exp(-1.0 / (ms * 48.0)); };
        fast += (a - fast) * (a > fast ? k(0.5) : k(20.0));
        slow += (a - slow) * (a > slow ? k(15.0) : k(60.0));
    }
};

TEST(Transient, bothGainsZeroChangeNothing) {
    const Buffer before = noise(1000, 1.0F);
    Buffer sound = before;
    DSP::transient(sound, 0.0, -0.0);
    EXPECT_EQ(sound, before);
}

TEST(Transient, attackRaisesOnlyWhereTheFastFollowerLeads) {
    const Buffer before = stroke();
    Buffer sound = before;
    DSP::transient(sound, 6.0, 0.0);
    const double most = std::pow(10.0, 6.0 / 20.0);
    Levels levels;
    std::size_t raised = 0;
    double largestGain = 0.0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        levels.follow(std::abs(static_cast<double>(before[i])));
        if (levels.fast > levels.slow) {
            ASSERT_GE(std::abs(sound[i]), std::abs(before[i]));
            ++raised;
            if (before[i] != 0.0F) {
                const double gain = static_cast<double>(sound[i]) / static_cast<double>(before[i]);
                ASSERT_LE(gain, most * (1.0 + 1e-6));
                largestGain = std::max(largestGain, gain);
            }
        } else {
            ASSERT_EQ(sound[i], before[i]);
        }
    }
    // Of the strike it is nearly all of the 6 dB, and it is over long before the sound.
    EXPECT_GT(largestGain, 0.9 * most);
    EXPECT_GT(raised, 100U);
    EXPECT_LT(raised, before.size() / 2);
    EXPECT_EQ(sound.back(), before.back());
}

TEST(Transient, sustainActsWhereTheSlowFollowerLeads) {
    const Buffer before = stroke();
    Buffer sound = before;
    DSP::transient(sound, 0.0, -12.0);
    EXPECT_EQ(sound[0], before[0]);
    const std::size_t late = before.size() - 1;
    const double gain = static_cast<double>(sound[late]) / static_cast<double>(before[late]);
    EXPECT_LT(gain, 0.6);
    EXPECT_GT(gain, std::pow(10.0, -12.0 / 20.0));
}

TEST(Transient, followsItsLaw) {
    const Buffer before = stroke();
    Buffer sound = before;
    DSP::transient(sound, 4.0, -7.0);
    Levels levels;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto x = static_cast<double>(before[i]);
        levels.follow(std::abs(x));
        const double m = std::max({levels.fast, levels.slow, 1e-9});
        const double attack = std::max(levels.fast - levels.slow, 0.0) / m;
        const double sustain = std::max(levels.slow - levels.fast, 0.0) / m;
        const double expected = x * (1.0 + (std::pow(10.0, 0.2) - 1.0) * attack +
                                     (std::pow(10.0, -0.35) - 1.0) * sustain);
        ASSERT_NEAR(sound[i], expected, 1e-6 * std::abs(x));
    }
}

TEST(Transient, hostileGainsNeverMakeNoNumber) {
    for (const double attack : hostileValues) {
        for (const double sustain : hostileValues) {
            Buffer sound = stroke(500);
            DSP::transient(sound, attack, sustain);
            EXPECT_TRUE(std::ranges::all_of(sound, [](float x) { return std::isfinite(x); }))
                << attack << " and " << sustain;
        }
    }
    Buffer none;
    DSP::transient(none, 6.0, 6.0);
    EXPECT_TRUE(none.empty());
}

} // namespace
} // namespace vornic
