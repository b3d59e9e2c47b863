#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic {
namespace {

TEST(Damping, withoutAmountChangesNothing) {
    const Buffer before = noise(1000, 1.0F);
    for (const double amount : {0.0, -1.0, notANumber}) {
        Buffer sound = before;
        DSP::damping(sound, amount, 0.0);
        EXPECT_EQ(sound, before);
    }
}

TEST(Damping, aStartBeyondTheSoundChangesNothing) {
    const Buffer before = noise(960, 1.0F);
    for (const double start : {20.0, 1000.0, 1e300, infinity, notANumber}) {
        Buffer sound = before;
        DSP::damping(sound, 1.0, start);
        EXPECT_EQ(sound, before);
    }
}

TEST(Damping, theFirstSampleFromTheStartIsStillExact) {
    const Buffer before = noise(2000, 1.0F);
    Buffer sound = before;
    DSP::damping(sound, 0.8, 12.0);
    for (std::size_t i = 0; i <= 576; ++i) {
        ASSERT_EQ(sound[i], before[i]);
    }
    EXPECT_NE(sound[577], before[577]);
}

TEST(Damping, followsItsFormula) {
    const Buffer before = noise(4000, 1.0F);
    for (const double amount : {0.25, 1.0, 7.0}) {
        Buffer sound = before;
        DSP::damping(sound, amount, 10.02);
        const double a = std::min(amount, 1.0);
        const double p = std::exp(-2.0 * std::numbers::pi * 20000.0 * std::pow(0.1, a) / 48000.0);
        double lp = static_cast<double>(before[479]);
        // 10.02 ms are 480.96 samples, of which the integer part counts.
        for (std::size_t i = 480; i < before.size(); ++i) {
            const auto x = static_cast<double>(before[i]);
            const auto d = static_cast<double>(i - 480);
            lp += (1.0 - p) * (x - lp);
            const double env = std::exp(-d / ((200.0 - 192.0 * a) * 48.0));
            const double ramp = std::min(d / 96.0, 1.0);
            ASSERT_NEAR(sound[i], lp * env * ramp + (1.0 - ramp) * x, 1e-6) << i;
        }
    }
}

TEST(Damping, darkensAndShortens) {
    Buffer low = sine(9600, 300.0, 1.0);
    Buffer high = sine(9600, 10000.0, 1.0);
    DSP::damping(low, 1.0, 0.0);
    DSP::damping(high, 1.0, 0.0);
    const auto part = [](const Buffer& s) { return Buffer(s.begin() + 240, s.begin() + 720); };
    EXPECT_LT(largest(part(high)), 0.4F * largest(part(low)));
    // After 40 ms, five time constants of 8 ms.
    EXPECT_LT(largest(Buffer(low.begin() + 1920, low.end())), 0.01F);
}

TEST(Damping, hostileParametersNeverMakeNoNumber) {
    for (const double amount : hostileValues) {
        for (const double start : hostileValues) {
            Buffer sound = stroke(500);
            DSP::damping(sound, amount, start);
            EXPECT_EQ(sound.size(), 500U);
            EXPECT_TRUE(std::ranges::all_of(sound, [](float x) { return std::isfinite(x); }));
        }
    }
    Buffer none;
    DSP::damping(none, 1.0, 0.0);
    EXPECT_TRUE(none.empty());
}

} // namespace
} // namespace vornic
