#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vornic {
namespace {

TEST(Resample, byNothingReturnsTheInput) {
    const Buffer sound = noise(1000, 1.0F);
    EXPECT_EQ(DSP::resample(sound, 0.0), sound);
    EXPECT_EQ(DSP::resample(sound, -0.0), sound);
    EXPECT_EQ(DSP::resample(sound, notANumber), sound);
}

TEST(Resample, oneSampleStaysAsItIs) {
    const Buffer sound{0.5F};
    EXPECT_EQ(DSP::resample(sound, 12.0), sound);
    EXPECT_EQ(DSP::resample(sound, -12.0), sound);
    EXPECT_TRUE(DSP::resample({}, 5.0).empty());
}

TEST(Resample, anOctaveUpHalvesTheLengthAndTakesEverySecondSample) {
    const Buffer sound = noise(1001, 1.0F);
    const Buffer up = DSP::resample(sound, 12.0);
    ASSERT_EQ(up.size(), 500U);
    for (std::size_t i = 0; i < up.size(); ++i) {
        ASSERT_EQ(up[i], sound[2 * i]);
    }
}

TEST(Resample, anOctaveDownDoublesTheLengthAndKeepsTheSamples) {
    const Buffer sound = noise(500, 1.0F);
    const Buffer down = DSP::resample(sound, -12.0);
    ASSERT_EQ(down.size(), 1000U);
    for (std::size_t i = 0; i < sound.size(); ++i) {
        ASSERT_EQ(down[2 * i], sound[i]);
    }
    // Half way a Catmull-Rom cubic weighs its neighbours -1/16, 9/16, 9/16, -1/16.
    EXPECT_NEAR(down[201], (9.0F * (sound[100] + sound[101]) - sound[99] - sound[102]) / 16.0F,
                1e-6F);
    // Beyond both ends lies silence.
    EXPECT_NEAR(down[1], (9.0F * (sound[0] + sound[1]) - sound[2]) / 16.0F, 1e-6F);
    EXPECT_NEAR(down[999], (9.0F * sound[499] - sound[498]) / 16.0F, 1e-6F);
}

TEST(Resample, lengthIsTheIntegerPart) {
    for (const double semitones : {-7.3, -0.01, 0.4, 3.0, 11.9}) {
        const Buffer sound = noise(4567, 1.0F);
        EXPECT_EQ(DSP::resample(sound, semitones).size(),
                  static_cast<std::size_t>(4567.0 / std::pow(2.0, semitones / 12.0)));
    }
}

TEST(Resample, movesThePitch) {
    for (const double semitones : {-5.0, 1.0, 7.0}) {
        const Buffer shifted = DSP::resample(sine(48000, 1000.0, 1.0), semitones);
        const double expected = 1000.0 * std::pow(2.0, semitones / 12.0);
        double best = 0.0;
        double bestHz = 0.0;
        for (double hz = 0.97 * expected; hz < 1.03 * expected; hz += 0.25) {
            const double level = std::abs(fourier(shifted, hz));
            if (level > best) {
                best = level;
                bestHz = hz;
            }
        }
        EXPECT_NEAR(bestHz, expected, 0.5);
        EXPECT_NEAR(2.0 * best / static_cast<double>(shifted.size()), 1.0, 0.01);
    }
}

TEST(Resample, followsTheCubic) {
    const Buffer sound = noise(300, 1.0F);
    const Buffer shifted = DSP::resample(sound, 3.0);
    const double ratio = std::pow(2.0, 3.0 / 12.0);
    for (std::size_t i = 1; i + 4 < shifted.size(); ++i) {
        const double position = ratio * static_cast<double>(i);
        const auto j = static_cast<std::size_t>(position);
        const double t = position - static_cast<double>(j);
        const double y0 = static_cast<double>(sound[j - 1]);
        const double y1 = static_cast<double>(sound[j]);
        const double y2 = static_cast<double>(sound[j + 1]);
        const double y3 = static_cast<double>(sound[j + 2]);
        // The four weights of the Catmull-Rom spline, written out.
        const double expected =
            y0 * (-0.5 * t * t * t + t * t - 0.5 * t) + y1 * (1.5 * t * t * t - 2.5 * t * t + 1.0) +
            y2 * (-1.5 * t * t * t + 2.0 * t * t + 0.5 * t) + y3 * (0.5 * t * t * t - 0.5 * t * t);
        ASSERT_NEAR(shifted[i], expected, 2e-6) << i;
    }
}

TEST(Resample, hostileShiftsNeitherCrashNorAskForAllMemory) {
    const Buffer sound = stroke(500);
    for (const double semitones : hostileValues) {
        const Buffer shifted = DSP::resample(sound, semitones);
        EXPECT_LE(shifted.size(), 64U * 500U);
        EXPECT_TRUE(std::ranges::all_of(shifted, [](float x) { return std::isfinite(x); }));
    }
    EXPECT_TRUE(DSP::resample(sound, 1e300).empty());
}

} // namespace
} // namespace vornic
