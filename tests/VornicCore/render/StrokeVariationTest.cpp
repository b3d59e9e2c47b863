#include "VornicCore/render/StrokeVariation.h"

#include "VornicCore/base/SplitMix64.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vornic {

namespace {

using Band = Equalizer::Band;

double drawn(SplitMix64& generator) {
    return static_cast<double>(generator.next((std::uint64_t{1} << 53) + 1)) * 0x1p-53;
}

TEST(StrokeVariation, drawsPitchLevelClickAndAirInThisOrderFromAGeneratorOfItsOwn) {
    SplitMix64 generator(9 + 81 * 2 + 40503 * 7);
    const double pitch = 2 * 0.5 * (0.3 * drawn(generator) - 0.15);
    const double level = 2 * 0.5 * (2 * drawn(generator) - 1);
    const double click = 2 * 0.5 * (1.4 * drawn(generator) - 0.7);
    const double air = 2 * 0.5 * (1.4 * drawn(generator) - 0.7);

    const auto variation = StrokeVariation::draw(0.5, Velocity::hard, 7, 9);
    EXPECT_DOUBLE_EQ(variation.pitch, pitch);
    EXPECT_DOUBLE_EQ(variation.levelDb, level);
    EXPECT_DOUBLE_EQ(variation.clickDb, click);
    EXPECT_DOUBLE_EQ(variation.airDb, air);
}

TEST(StrokeVariation, seedsWrapAround) {
    const auto variation = StrokeVariation::draw(1, Velocity::soft, 1, UINT64_MAX - 40502);
    SplitMix64 zero(0);
    EXPECT_DOUBLE_EQ(variation.pitch, 2 * (0.3 * drawn(zero) - 0.15));
}

TEST(StrokeVariation, staysWithinItsSpreadAndReachesAlmostAllOfIt) {
    double lowest = 1;
    double highest = -1;
    for (std::int64_t variant = 0; variant < 2000; ++variant) {
        const auto variation = StrokeVariation::draw(1, Velocity::medium, variant, 1);
        EXPECT_LE(std::abs(variation.pitch), 0.3);
        EXPECT_LE(std::abs(variation.levelDb), 2.0);
        EXPECT_LE(std::abs(variation.clickDb), 1.4);
        EXPECT_LE(std::abs(variation.airDb), 1.4);
        lowest = std::min(lowest, variation.pitch);
        highest = std::max(highest, variation.pitch);
    }
    EXPECT_LT(lowest, -0.29);
    EXPECT_GT(highest, 0.29);
}

TEST(StrokeVariation, ofAmountZeroChangesNothing) {
    const auto variation = StrokeVariation::draw(0, Velocity::hard, 5, 1);
    EXPECT_EQ(variation.pitch, 0);
    EXPECT_EQ(variation.levelDb, 0);
    EXPECT_EQ(variation.clickDb, 0);
    EXPECT_EQ(variation.airDb, 0);
}

TEST(Struck, softlyDarkensAndSoftensTheAttack) {
    const ChainParams chain = struck(ChainParams::neutral(), Velocity::soft, {});
    EXPECT_EQ(chain.eq.gain(Band::air), -1.5F);
    EXPECT_EQ(chain.eq.gain(Band::bass), 0.0F);
    EXPECT_EQ(chain.attackDb, -3);
    EXPECT_EQ(finalLevelDb(Velocity::soft, {}), -3);
}

TEST(Struck, moderatelyChangesNothing) {
    EXPECT_EQ(struck(ChainParams::neutral(), Velocity::medium, {}), ChainParams::neutral());
    EXPECT_EQ(finalLevelDb(Velocity::medium, {}), 0);
}

TEST(Struck, hardAddsBassAndAttack) {
    const ChainParams chain = struck(ChainParams::neutral(), Velocity::hard, {});
    EXPECT_EQ(chain.eq.gain(Band::bass), 1.0F);
    EXPECT_EQ(chain.eq.gain(Band::air), 0.0F);
    EXPECT_EQ(chain.attackDb, 2.5);
    EXPECT_EQ(finalLevelDb(Velocity::hard, {.levelDb = 0.5}), 2.5);
}

TEST(Struck, addsTheVariationToClickAndAirWithinTheRangeOfTheEqualiser) {
    ChainParams neutral = ChainParams::neutral();
    neutral.eq.setGain(Band::air, -11.5F);
    const ChainParams chain = struck(neutral, Velocity::soft, {.clickDb = 1.25, .airDb = 0.5});
    EXPECT_EQ(chain.eq.gain(Band::click), 1.25F);
    // -13 is moved to -12 before the variation is added.
    EXPECT_EQ(chain.eq.gain(Band::air), -11.5F);
}

} // namespace

} // namespace vornic
