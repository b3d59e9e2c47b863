#include "packs/analysis/StrokeFeatures.h"

#include "packs/analysis/ClassFeatures.h"
#include "packs/analysis/Distances.h"
#include "packs/recorded/StrokeShape.h"
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic::packs {
namespace {

struct Burst {
    double ms;
    double amplitude;
    double hz;
    double decayMs;
};

std::vector<float> strokeOf(const std::vector<Burst>& bursts) {
    std::vector<float> samples(200 * millisecond);
    for (const Burst& burst : bursts) {
        const double start = burst.ms * millisecond;
        for (auto i = static_cast<std::size_t>(start); i < samples.size(); ++i) {
            const double ms = static_cast<double>(i) / millisecond - burst.ms;
            samples[i] += static_cast<float>(burst.amplitude * std::exp(-ms / burst.decayMs) *
                                             std::sin(2 * std::numbers::pi * burst.hz * ms / 1000));
        }
    }
    return samples;
}

TEST(StrokeFeatures, findTheBandAndTheCentroidOfATone) {
    const auto features = featuresOf(strokeOf({{5, 0.5, 2000, 4}}));
    const auto& early = features.bandsDb[0];
    const auto loudest = std::ranges::max_element(early) - early.begin();
    EXPECT_EQ(bandCentres.at(static_cast<std::size_t>(loudest)), 2000);
    EXPECT_NEAR(features.centroidHz, 2000, 200);
}

TEST(StrokeFeatures, findHowFastABandDecays) {
    for (const double decay : {3.0, 8.0, 15.0}) {
        const auto features = featuresOf(strokeOf({{5, 0.5, 2800, decay}}));
        ASSERT_TRUE(features.broad.decayMs[3]);
        EXPECT_NEAR(*features.broad.decayMs[3], decay, 0.15 * decay);
    }
}

TEST(StrokeFeatures, findTheEventsOfAStroke) {
    const auto features =
        featuresOf(strokeOf({{5, 0.1, 8000, 1}, {15, 0.3, 3000, 1.5}, {35, 0.2, 1500, 2}}));
    ASSERT_EQ(features.events.size(), 3U);
    EXPECT_NEAR(features.events[1].ms, 10, 1);
    EXPECT_NEAR(features.events[2].ms, 30, 1);
    EXPECT_NEAR(features.events[0].db, -11, 2);
    EXPECT_EQ(features.events[1].db, 0);
    EXPECT_GT(features.events[0].centroidHz, features.events[1].centroidHz);
    EXPECT_GT(features.events[1].centroidHz, features.events[2].centroidHz);
    EXPECT_EQ(features.gapToStrongestMs, features.events[1].ms);
}

TEST(StrokeFeatures, areFreeOfLevel) {
    const auto loud = featuresOf(strokeOf({{5, 0.8, 2000, 4}, {20, 0.3, 900, 4}}));
    const auto faint = featuresOf(strokeOf({{5, 0.08, 2000, 4}, {20, 0.03, 900, 4}}));
    EXPECT_NEAR(loud.levelDb - faint.levelDb, 20, 0.01);
    EXPECT_NEAR(loud.centroidHz, faint.centroidHz, 1);
    EXPECT_EQ(loud.dur30Ms, faint.dur30Ms);
    EXPECT_NEAR(loud.crestDb, faint.crestDb, 0.01);
    EXPECT_EQ(loud.events.size(), faint.events.size());
}

TEST(StrokeFeatures, ofSilenceAreNothing) {
    const auto features = featuresOf(std::vector<float>(9600));
    EXPECT_EQ(features.levelDb, 0);
    EXPECT_TRUE(features.events.empty());
}

TEST(ClassFeatures, findTheModesThatStrokesShare) {
    std::vector<std::vector<float>> strokes;
    for (const double off : {0.99, 1.0, 1.01, 1.0}) {
        strokes.push_back(strokeOf({{5, 0.5, 1000 * off, 8}, {5, 0.3, 3000 * off, 8}}));
    }
    const ClassFeatures features = classFeaturesOf(strokes);
    ASSERT_GE(features.modes.size(), 2U);
    const auto hasMode = [&](double hz) {
        return std::ranges::any_of(features.modes, [&](const ModeStatistic& mode) {
            return std::abs(mode.hz / hz - 1) < 0.03 && mode.present == 1;
        });
    };
    EXPECT_TRUE(hasMode(1000));
    EXPECT_TRUE(hasMode(3000));
}

TEST(Distances, areZeroFromAClassToItselfAndLargeToAnother) {
    std::vector<std::vector<float>> dull;
    std::vector<std::vector<float>> bright;
    for (int i = 0; i < 6; ++i) {
        const double off = 1 + 0.01 * i;
        dull.push_back(strokeOf({{5, 0.5, 600 * off, 9}}));
        bright.push_back(strokeOf({{5, 0.5, 6000 * off, 1}, {25 + off, 0.5, 8000, 1}}));
    }
    const ClassFeatures target = classFeaturesOf(dull);
    for (const Distance& row : distances(target, target)) {
        EXPECT_EQ(row.deviations, 0) << row.group << " " << row.name;
    }
    EXPECT_LT(shareWithin(distances(classFeaturesOf(bright), target)), 0.6);
}

} // namespace
} // namespace vornic::packs
