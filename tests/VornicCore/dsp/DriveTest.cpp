#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vornic {
namespace {

TEST(Drive, withoutAmountChangesNothing) {
    const Buffer before = noise(1000, 1.0F);
    for (const double amount : {0.0, -0.5, notANumber}) {
        Buffer sound = before;
        DSP::drive(sound, amount);
        EXPECT_EQ(sound, before);
    }
}

TEST(Drive, keepsFullScaleExactly) {
    for (const double amount : {0.01, 0.1, 0.37, 0.5, 1.0, 3.3, 1e6}) {
        Buffer sound(100, 1.0F);
        DSP::drive(sound, amount);
        EXPECT_LT(sound[0], 1.0F + 1e-6F);
        for (std::size_t i = 1; i < sound.size(); ++i) {
            ASSERT_EQ(sound[i], 1.0F) << amount;
        }
    }
}

TEST(Drive, isOddSymmetric) {
    Buffer plus = noise(1000, 1.0F);
    Buffer minus = plus;
    std::ranges::transform(minus, minus.begin(), [](float x) { return -x; });
    DSP::drive(plus, 0.6);
    DSP::drive(minus, 0.6);
    std::ranges::transform(minus, minus.begin(), [](float x) { return -x; });
    EXPECT_EQ(plus, minus);
}

TEST(Drive, followsItsFormula) {
    const Buffer before = noise(1000, 1.0F);
    Buffer sound = before;
    DSP::drive(sound, 0.4);
    double prev = 0.0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto x = static_cast<double>(before[i]);
        const double expected =
            0.5 * (std::tanh(2.6 * (prev + x) / 2.0) + std::tanh(2.6 * x)) / std::tanh(2.6);
        ASSERT_NEAR(sound[i], expected, 1e-6);
        prev = x;
    }
}

TEST(Drive, addsOddHarmonicsOnly) {
    Buffer sound = sine(48000, 500.0, 0.9);
    DSP::drive(sound, 1.0);
    const double first = std::abs(fourier(sound, 500.0));
    EXPECT_GT(std::abs(fourier(sound, 1500.0)) / first, 0.05);
    EXPECT_GT(std::abs(fourier(sound, 2500.0)) / first, 0.01);
    EXPECT_LT(std::abs(fourier(sound, 1000.0)) / first, 1e-4);
    EXPECT_LT(std::abs(fourier(sound, 2000.0)) / first, 1e-4);
}

TEST(Drive, hostileAmountsNeverMakeNoNumber) {
    for (const double amount : hostileValues) {
        Buffer sound = stroke(500);
        sound[7] = 0.0F;
        DSP::drive(sound, amount);
        EXPECT_TRUE(std::ranges::all_of(sound, [](float x) { return std::abs(x) <= 1.1F; }));
    }
    Buffer none;
    DSP::drive(none, 1.0);
    EXPECT_TRUE(none.empty());
}

} // namespace
} // namespace vornic
