#include "packs/recorded/StrokeShape.h"

#include "tests/packs/recorded/SyntheticStroke.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <span>

namespace vornic::packs {
namespace {

double onsetMs(const SyntheticStroke& stroke, Stroke kind) {
    return static_cast<double>(strokeOnset(synthesise(stroke), kind)) / millisecond;
}

std::vector<float> sine(double frequency) {
    std::vector<float> samples(48000);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<float>(
            0.5 * std::sin(2 * std::numbers::pi * frequency * static_cast<double>(i) / 48000));
    }
    return samples;
}

// Gain of `removeRumble` in dB once it has settled.
double rumbleGain(double frequency) {
    std::vector<float> samples = sine(frequency);
    removeRumble(samples);
    return decibels(rms(std::span(samples).last(24000)) * std::numbers::sqrt2 / 0.5);
}

TEST(StrokeShape, findsTheAttack) {
    for (const double attack : {0.0, 0.4, 5.0, 37.2, 120.7}) {
        for (const Stroke kind : {Stroke::press, Stroke::release}) {
            EXPECT_NEAR(onsetMs({.attackMs = attack}, kind), attack, 0.25) << attack;
        }
    }
}

TEST(StrokeShape, aPressBeginsAtItsClickNotAtTheFingersTouch) {
    EXPECT_NEAR(onsetMs({.attackMs = 40, .touchMs = 10}, Stroke::press), 40, 0.25);
}

TEST(StrokeShape, aReleaseBeginsAtItsFirstEvent) {
    EXPECT_NEAR(onsetMs({.attackMs = 40, .touchMs = 10}, Stroke::release), 10, 0.25);
}

TEST(StrokeShape, eventsCloserThanThreeMillisecondsAreOneAttack) {
    EXPECT_NEAR(onsetMs({.attackMs = 14, .touchMs = 10}, Stroke::press), 10, 0.25);
}

TEST(StrokeShape, silenceBeginsAtItsStart) {
    EXPECT_EQ(strokeOnset({}, Stroke::press), 0U);
    EXPECT_EQ(strokeOnset(std::vector<float>(10, 0.5F), Stroke::press), 0U);
    EXPECT_EQ(strokeOnset(std::vector<float>(4800, 0.0F), Stroke::release), 0U);
}

TEST(StrokeShape, threeSamplesAtFullScaleAreClipped) {
    EXPECT_TRUE(isClipped(std::vector<float>{0, 1, 1, 1, 0}));
    EXPECT_TRUE(isClipped(std::vector<float>{0, -1, -0.9999F, -1, 0}));
    EXPECT_FALSE(isClipped(std::vector<float>{0, 1, 1, 0.99F, 1, 1, 0}));
    EXPECT_FALSE(isClipped(std::vector<float>{1, 1, -1, -1, 1, 1}));
    EXPECT_TRUE(isClipped(std::vector<float>{1, -1, -1, -1}));
}

TEST(StrokeShape, tellsASecondStrokeFromARebound) {
    EXPECT_FALSE(holdsSecondStroke(synthesise({})));
    EXPECT_FALSE(holdsSecondStroke(synthesise({.secondMs = 60})));
    EXPECT_TRUE(holdsSecondStroke(synthesise({.secondMs = 200})));
    EXPECT_FALSE(holdsSecondStroke({}));
}

TEST(StrokeShape, removesRumbleAndKeepsTheKey) {
    EXPECT_LT(rumbleGain(20), -37);
    EXPECT_NEAR(rumbleGain(60), -3, 0.1);
    EXPECT_NEAR(rumbleGain(125), 0, 0.05);
    EXPECT_NEAR(rumbleGain(1000), 0, 0.001);
}

TEST(StrokeShape, removesAnOffset) {
    std::vector<float> samples(4800, 0.25F);
    removeRumble(samples);
    EXPECT_LT(peak(samples), 1e-6F);
}

TEST(StrokeShape, cutsFromOneMillisecondBeforeTheOnset) {
    const std::vector<float> samples(48000, 0.5F);
    const std::vector<float> stroke = cutStroke(samples, 1000);
    EXPECT_EQ(stroke.size(), 260U * 48U);
    EXPECT_EQ(stroke.front(), 0.0F);
    EXPECT_LT(stroke[10], 0.5F);
    EXPECT_EQ(stroke[24], 0.5F);
    EXPECT_EQ(stroke[200 * millisecond], 0.5F);
    EXPECT_LT(stroke[230 * millisecond], 0.5F);
    EXPECT_EQ(stroke.back(), 0.0F);
}

TEST(StrokeShape, aRecordingThatBeginsInItsAttackHardlyFadesIn) {
    const std::vector<float> stroke = cutStroke(std::vector<float>(48000, 0.5F), 0);
    EXPECT_EQ(stroke[0], 0.0F);
    EXPECT_EQ(stroke[6], 0.5F);
}

TEST(StrokeShape, cutsShortRecordingsWithinTheirBounds) {
    EXPECT_TRUE(cutStroke({}, 0).empty());
    EXPECT_EQ(cutStroke(std::vector<float>(1, 0.5F), 0).size(), 1U);
    EXPECT_EQ(cutStroke(std::vector<float>(100, 0.5F), 99).size(), 49U);
}

TEST(StrokeShape, measuresLevels) {
    EXPECT_NEAR(decibels(0.5), -6.02, 0.01);
    EXPECT_EQ(decibels(0), -200);
    EXPECT_EQ(rms({}), 0);
    EXPECT_EQ(peak({}), 0);
    EXPECT_EQ(peak(std::vector<float>{0.25F, -0.75F, 0.5F}), 0.75F);
    // Only the first 40 ms count.
    std::vector<float> samples(4800, 1.0F);
    std::fill_n(samples.begin(), 1920, 0.1F);
    EXPECT_NEAR(strokeLevel(samples), -20, 0.001);
}

} // namespace
} // namespace vornic::packs
