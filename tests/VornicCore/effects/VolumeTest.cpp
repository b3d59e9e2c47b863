#include "VornicCore/effects/Volume.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vornic {
namespace {

using Sound = std::vector<float>;

Sound constant(Volume& volume, std::size_t frames) {
    Sound left(frames, 1.0F);
    Sound right(frames, -1.0F);
    for (std::size_t i = 0; i < frames; i += 128) {
        const std::size_t count = std::min<std::size_t>(128, frames - i);
        volume.process(count, left.data() + i, right.data() + i);
    }
    for (std::size_t i = 0; i < frames; ++i) {
        EXPECT_EQ(right[i], -left[i]);
    }
    return left;
}

TEST(Volume, startsWhereItIsSetWithoutAGlide) {
    Volume volume(0.25F);
    EXPECT_EQ(constant(volume, 1).front(), 0.25F);
    Volume other;
    other.set(0.5F);
    EXPECT_EQ(constant(other, 1).front(), 0.5F);
}

TEST(Volume, oneIsTransparentToTheBit) {
    Volume volume;
    Sound left{0.1F, -0.0F, std::numeric_limits<float>::denorm_min(), 3.0F};
    Sound right = left;
    volume.process(4, left.data(), right.data());
    EXPECT_EQ(left[0], 0.1F);
    EXPECT_TRUE(std::signbit(left[1]));
    EXPECT_EQ(left[2], std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(left[3], 3.0F);
}

TEST(Volume, glidesInAStraightLineAndArrivesExactly) {
    Volume volume(1.0F);
    constant(volume, 128);
    volume.set(0.2F);
    const Sound sound = constant(volume, 1024);
    for (std::size_t i = 0; i < Volume::glideFrames; ++i) {
        const double expected = 1.0 - 0.8 * static_cast<double>(i + 1) / Volume::glideFrames;
        ASSERT_NEAR(sound[i], expected, 1e-6);
    }
    EXPECT_EQ(sound[Volume::glideFrames - 1], 0.2F);
    EXPECT_EQ(sound.back(), 0.2F);
}

TEST(Volume, aChangeDuringAGlideMakesNoStep) {
    Volume volume(0.0F);
    Sound sound = constant(volume, 128);
    for (const float target : {1.0F, 0.0F, 0.7F, 1.0F}) {
        volume.set(target);
        const Sound next = constant(volume, target == 0.7F ? 1024 : 128);
        sound.insert(sound.end(), next.begin(), next.end());
    }
    for (std::size_t i = 1; i < sound.size(); ++i) {
        ASSERT_LE(std::abs(sound[i] - sound[i - 1]), 1.0F / 383.0F);
    }
    EXPECT_EQ(constant(volume, 1024).back(), 1.0F);
}

TEST(Volume, zeroIsSilence) {
    Volume volume(0.0F);
    for (const float x : constant(volume, 256)) {
        ASSERT_EQ(x, 0.0F);
    }
}

TEST(Volume, staysWithinItsRange) {
    Volume volume(7.0F);
    EXPECT_EQ(volume.volume(), 1.0F);
    volume.set(-3.0F);
    EXPECT_EQ(volume.volume(), 0.0F);
    volume.set(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(volume.volume(), 0.0F);
    volume.set(std::numeric_limits<float>::infinity());
    EXPECT_EQ(volume.volume(), 1.0F);
}

} // namespace
} // namespace vornic
