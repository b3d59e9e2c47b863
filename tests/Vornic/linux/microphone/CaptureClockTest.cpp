#include "Vornic/linux/microphone/CaptureClock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace vornic {
namespace {

using Losses = std::vector<std::int64_t>;
/// What the clock reads, and what a cycle brings.
using Cycles = std::vector<std::pair<std::int64_t, std::int64_t>>;

/// What was lost before each cycle but the last one.
Losses lossesIn(const Cycles& cycles) {
    CaptureClock clock;
    Losses losses;
    for (const auto& [ticks, frames] : cycles) {
        losses.push_back(clock.lostBeforeLast(ticks, frames));
    }
    losses.erase(losses.begin());
    return losses;
}

TEST(CaptureClock, losesNothingWhileEveryCycleComes) {
    EXPECT_EQ(lossesIn({{1000, 128}, {1128, 128}, {1256, 256}, {1512, 256}}), (Losses{0, 0, 0}));
}

TEST(CaptureClock, countsTheFramesOfCyclesThatDidNotCome) {
    EXPECT_EQ(lossesIn({{0, 128}, {256, 128}, {384, 128}, {1024, 128}, {1152, 128}}),
              (Losses{0, 128, 0, 512}));
}

TEST(CaptureClock, isNotMisledByAReadingOfTheCycleAfter) {
    EXPECT_EQ(lossesIn({{0, 128}, {256, 128}, {256, 128}, {384, 128}}), (Losses{0, 0, 0}));
    EXPECT_EQ(lossesIn({{0, 128}, {256, 128}, {512, 128}, {512, 128}, {640, 128}}),
              (Losses{0, 128, 0, 0}))
        << "one was read early, one is lost";
    EXPECT_EQ(lossesIn({{128, 128}, {128, 128}, {256, 128}, {512, 128}, {640, 128}}),
              (Losses{0, 0, 0, 128}))
        << "the first of all was read early";
}

TEST(CaptureClock, comparesNothingAcrossAChangeOfTheClock) {
    EXPECT_EQ(lossesIn({{90000, 128}, {90128, 128}, {40, 128}, {168, 128}, {424, 128}, {552, 128}}),
              (Losses{0, 0, 0, 0, 128}));
}

TEST(CaptureClock, toleratesWhatAResamplerKeepsBack) {
    EXPECT_EQ(lossesIn({{0, 94}, {118, 117}, {235, 118}, {353, 117}, {588, 118}, {705, 117}}),
              (Losses{0, 0, 0, 0, 141}));
}

} // namespace
} // namespace vornic
