#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vornic {
namespace {

TEST(TrimTail, ofSilenceIsEmpty) {
    Buffer sound(1000);
    DSP::trimTail(sound, -60.0);
    EXPECT_TRUE(sound.empty());
    DSP::trimTail(sound, -60.0);
    EXPECT_TRUE(sound.empty());
}

TEST(TrimTail, twoSamplesGetNoFade) {
    Buffer sound{0.5F, -0.25F};
    DSP::trimTail(sound, -60.0);
    EXPECT_EQ(sound, (Buffer{0.5F, -0.25F}));
}

TEST(TrimTail, threeSamplesFadeByOne) {
    Buffer sound{0.5F, -0.25F, 0.25F};
    DSP::trimTail(sound, -60.0);
    EXPECT_EQ(sound, (Buffer{0.5F, -0.25F, 0.0F}));
}

TEST(TrimTail, keepsFourMillisecondsAfterTheLastLoudSample) {
    Buffer sound(5000, 0.001F);
    sound[10] = 1.0F;
    sound[1000] = -0.011F;
    DSP::trimTail(sound, -40.0);
    ASSERT_EQ(sound.size(), 1192U);
    EXPECT_EQ(sound[999], 0.001F);
    EXPECT_EQ(sound[1000], static_cast<float>(static_cast<double>(-0.011F) * (191.0 / 192.0)));
    EXPECT_EQ(sound.back(), 0.0F);
}

TEST(TrimTail, neverKeepsMoreThanThereWas) {
    Buffer sound(1000, 0.5F);
    DSP::trimTail(sound, -40.0);
    EXPECT_EQ(sound.size(), 1000U);
    EXPECT_EQ(sound.back(), 0.0F);
}

TEST(TrimTail, aSampleExactlyAtTheFloorIsNotAbove) {
    Buffer sound(1000);
    sound[0] = 1.0F;
    sound[500] = static_cast<float>(std::pow(10.0, -2.0));
    DSP::trimTail(sound, -40.0);
    EXPECT_EQ(sound.size(), 192U);
    sound = Buffer(1000);
    sound[0] = 1.0F;
    sound[500] = std::nextafter(static_cast<float>(std::pow(10.0, -2.0)), 1.0F);
    DSP::trimTail(sound, -40.0);
    EXPECT_EQ(sound.size(), 692U);
}

TEST(TrimTail, fadesInAStraightLineOverAtMostAThird) {
    Buffer sound(300, 0.5F);
    DSP::trimTail(sound, -40.0);
    EXPECT_EQ(sound[199], 0.5F);
    for (std::size_t j = 0; j < 100; ++j) {
        ASSERT_EQ(sound[299 - j], static_cast<float>(0.5 * (static_cast<double>(j) / 100.0)));
    }
    Buffer longer(3000, 0.5F);
    DSP::trimTail(longer, -40.0);
    EXPECT_EQ(longer[3000 - 193], 0.5F);
    EXPECT_LT(longer[3000 - 192], 0.5F);
}

TEST(TrimTail, hostileFloorsNeverCrash) {
    for (const double floor : hostileValues) {
        Buffer sound = stroke(500);
        DSP::trimTail(sound, floor);
        EXPECT_LE(sound.size(), 500U);
    }
    Buffer sound = stroke(500);
    DSP::trimTail(sound, notANumber);
    EXPECT_EQ(sound, stroke(500));
}

} // namespace
} // namespace vornic
