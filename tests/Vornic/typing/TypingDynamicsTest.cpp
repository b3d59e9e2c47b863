#include "Vornic/typing/TypingDynamics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vornic {
namespace {

TEST(TypingDynamics, startsAtAQuarterOfASecondAndAPlainShape) {
    const TypingDynamics dynamics;
    EXPECT_EQ(dynamics.pace, 0.25);
    EXPECT_EQ(dynamics.last, (StrokeShape{1.0f, 1.0f, 0.0f}));
    EXPECT_FALSE(dynamics.lastDown.has_value());
}

TEST(TypingDynamics, speedRunsFromASlowPaceToAFastOne) {
    TypingDynamics dynamics;
    dynamics.pace = 0.35;
    EXPECT_EQ(dynamics.speed(), 0.0);
    dynamics.pace = 2.0;
    EXPECT_EQ(dynamics.speed(), 0.0);
    dynamics.pace = 0.08;
    EXPECT_EQ(dynamics.speed(), 1.0);
    dynamics.pace = 0.01;
    EXPECT_EQ(dynamics.speed(), 1.0);
    dynamics.pace = 0.215;
    EXPECT_NEAR(dynamics.speed(), 0.5, 1e-12);
}

TEST(TypingDynamics, theFirstKeyAndOneAfterAPauseLeaveThePace) {
    TypingDynamics dynamics;
    SplitMix64 generator(1);
    dynamics.down(100.0, generator);
    EXPECT_EQ(dynamics.pace, 0.25);
    dynamics.down(101.2, generator);
    EXPECT_EQ(dynamics.pace, 0.25);
    dynamics.down(101.3, generator);
    EXPECT_NEAR(dynamics.pace, 0.7 * 0.25 + 0.3 * 0.1, 1e-12);
}

TEST(TypingDynamics, aGapOfJustThePauseIsOne) {
    TypingDynamics dynamics;
    SplitMix64 generator(1);
    dynamics.down(0.0, generator);
    dynamics.down(1.2, generator); // no rounding: 1.2 - 0
    EXPECT_EQ(dynamics.pace, 0.25);
}

TEST(TypingDynamics, aGapJustBelowThePauseCountsAsPace) {
    TypingDynamics dynamics;
    SplitMix64 generator(1);
    dynamics.down(0.0, generator);
    dynamics.down(1.1999, generator);
    EXPECT_NEAR(dynamics.pace, 0.7 * 0.25 + 0.3 * 1.1999, 1e-12);
}

TEST(TypingDynamics, fastTypingDrivesTheSpeedToOne) {
    TypingDynamics dynamics;
    SplitMix64 generator(1);
    for (int key = 0; key < 60; ++key) {
        dynamics.down(0.07 * key, generator);
    }
    EXPECT_EQ(dynamics.speed(), 1.0);
}

/// Draws many shapes and gives the smallest, mean (of decibels and rate) and largest.
struct Spread {
    double lowDb = 1e9;
    double highDb = -1e9;
    double lowRate = 1e9;
    double highRate = -1e9;
};

Spread spread(double speed, bool afterPause) {
    Spread found;
    SplitMix64 generator(99);
    for (int draw = 0; draw < 20000; ++draw) {
        const StrokeShape shape = TypingDynamics::shape(speed, afterPause, generator);
        const double db = 20.0 * std::log10(static_cast<double>(shape.gain));
        found.lowDb = std::min(found.lowDb, db);
        found.highDb = std::max(found.highDb, db);
        found.lowRate = std::min(found.lowRate, static_cast<double>(shape.rate));
        found.highRate = std::max(found.highRate, static_cast<double>(shape.rate));
        EXPECT_EQ(shape.pan, 0.0f);
    }
    return found;
}

void expectSpread(const Spread& found, double gain, double rate) {
    const double db = 20.0 * std::log10(gain);
    EXPECT_NEAR(found.lowDb, db - 1.5, 0.01);
    EXPECT_NEAR(found.highDb, db + 1.5, 0.01);
    EXPECT_NEAR(found.lowRate, rate * 0.985, 0.0001);
    EXPECT_NEAR(found.highRate, rate * 1.015, 0.0001);
}

TEST(TypingDynamics, slowStrokesAreFullAndLow) {
    expectSpread(spread(0.0, false), 1.0, 0.975);
}

TEST(TypingDynamics, fastStrokesAreSofterAndHigher) {
    expectSpread(spread(1.0, false), 0.68, 1.025);
}

TEST(TypingDynamics, aStrokeAfterAPauseIsLouderAndLower) {
    expectSpread(spread(0.0, true), 1.05, 0.965);
    expectSpread(spread(1.0, true), 0.83, 1.015);
}

TEST(TypingDynamics, drawsTheGainBeforeTheRate) {
    SplitMix64 generator(5);
    SplitMix64 reference(5);
    const StrokeShape shape = TypingDynamics::shape(0.0, false, generator);
    const double gain = std::pow(10.0, reference.uniform(-1.5, 1.5) / 20.0);
    const double rate = 0.975 * (1.0 + reference.uniform(-0.015, 0.015));
    EXPECT_EQ(shape.gain, static_cast<float>(gain));
    EXPECT_EQ(shape.rate, static_cast<float>(rate));
}

TEST(TypingDynamics, remembersTheLastShapeWithoutPan) {
    TypingDynamics dynamics;
    SplitMix64 generator(5);
    const StrokeShape shape = dynamics.down(1.0, generator);
    EXPECT_EQ(dynamics.last, (StrokeShape{shape.gain, shape.rate, 0.0f}));
    EXPECT_EQ(dynamics.lastDown, 1.0);
}

} // namespace
} // namespace vornic
