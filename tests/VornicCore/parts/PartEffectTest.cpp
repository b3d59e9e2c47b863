#include "VornicCore/parts/PartEffect.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

using Band = Equalizer::Band;

const PartEffect a{.eq = {{Band::bass, 1}, {Band::click, 2}},
                   .attackDb = 1,
                   .sustainDb = 2,
                   .damping = 3,
                   .drive = 4,
                   .pitch = 5,
                   .ring = 6,
                   .clickLayerDb = -8};
const PartEffect b{.eq = {{Band::click, 8}, {Band::air, 16}},
                   .attackDb = 10,
                   .sustainDb = 20,
                   .damping = 30,
                   .drive = 40,
                   .pitch = 50,
                   .ring = 60,
                   .springLayerDb = -16};

PartEffect click(std::optional<double> level) {
    return {.clickLayerDb = level};
}
PartEffect spring(std::optional<double> level) {
    return {.springLayerDb = level};
}

TEST(PartEffect, noneChangesNothing) {
    EXPECT_TRUE(PartEffect::none().eq.empty());
    EXPECT_EQ(PartEffect::none(), PartEffect{});
    EXPECT_EQ(PartEffect::none() + a, a);
    EXPECT_EQ(a + PartEffect::none(), a);
    EXPECT_EQ(a - PartEffect::none(), a);
}

TEST(PartEffect, addsBandByBandAndFieldByField) {
    EXPECT_EQ(a + b, (PartEffect{.eq = {{Band::bass, 1}, {Band::click, 10}, {Band::air, 16}},
                                 .attackDb = 11,
                                 .sustainDb = 22,
                                 .damping = 33,
                                 .drive = 44,
                                 .pitch = 55,
                                 .ring = 66,
                                 .clickLayerDb = -8,
                                 .springLayerDb = -16}));
}

TEST(PartEffect, subtractsBandByBandAndFieldByField) {
    EXPECT_EQ(a - b, (PartEffect{.eq = {{Band::bass, 1}, {Band::click, -6}, {Band::air, -16}},
                                 .attackDb = -9,
                                 .sustainDb = -18,
                                 .damping = -27,
                                 .drive = -36,
                                 .pitch = -45,
                                 .ring = -54,
                                 .clickLayerDb = -8}));
}

TEST(PartEffect, aSumTakesTheHigherLayer) {
    EXPECT_EQ((click(-8) + click(-12)).clickLayerDb, -8);
    EXPECT_EQ((click(-12) + click(-8)).clickLayerDb, -8);
    EXPECT_EQ((spring(-16) + spring(-24)).springLayerDb, -16);
    EXPECT_EQ((spring({}) + spring(-24)).springLayerDb, -24);
    EXPECT_EQ((spring(-24) + spring({})).springLayerDb, -24);
    EXPECT_FALSE((spring({}) + spring({})).springLayerDb.has_value());
}

TEST(PartEffect, aLayerThatTheRecordingHasIsNotMixedInAgain) {
    EXPECT_FALSE((spring(-16) - spring(-16)).springLayerDb.has_value());
    EXPECT_FALSE((spring(-16) - spring(-10)).springLayerDb.has_value());
    EXPECT_EQ((spring(-16) - spring(-20)).springLayerDb, -16);
    EXPECT_EQ((spring(-16) - spring({})).springLayerDb, -16);
    EXPECT_FALSE((spring({}) - spring(-16)).springLayerDb.has_value());
    EXPECT_FALSE((click(-8) - click(-8)).clickLayerDb.has_value());
    EXPECT_EQ((click(-8) - click(-12)).clickLayerDb, -8);
}

TEST(PartEffect, aLayerThreeDecibelsLowerIsSimilar) {
    EXPECT_FALSE((spring(-16) - spring(-19)).springLayerDb.has_value());
    EXPECT_EQ((spring(-16) - spring(-19.001)).springLayerDb, -16);
}

} // namespace
} // namespace vornic
