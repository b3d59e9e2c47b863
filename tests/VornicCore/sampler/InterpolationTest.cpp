#include "VornicCore/sampler/Interpolation.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace vornic {
namespace {

const std::array<float, 4> frames = {1.0F, -2.0F, 4.0F, 3.0F};

float at(double position) {
    return interpolate(frames.data(), frames.size(), position);
}

/// The cubic through four frames, `t` behind the second one.
float cubic(float before, float x0, float x1, float x2, float t) {
    const float c1 = (x1 - before) * 0.5F;
    const float c2 = before - 2.5F * x0 + 2.0F * x1 - 0.5F * x2;
    const float c3 = (x2 - before) * 0.5F + (x0 - x1) * 1.5F;
    return x0 + ((c3 * t + c2) * t + c1) * t;
}

TEST(Interpolation, givesTheFramesThemselvesAtWholePositions) {
    EXPECT_EQ(at(0.0), 1.0F);
    EXPECT_EQ(at(3.0), 3.0F);
    EXPECT_EQ(at(-1.0), 0.0F);
    EXPECT_EQ(at(4.0), 0.0F);
}

TEST(Interpolation, readsSilenceAroundTheSample) {
    EXPECT_EQ(at(0.25), cubic(0.0F, 1.0F, -2.0F, 4.0F, 0.25F));
    EXPECT_EQ(at(1.5), cubic(1.0F, -2.0F, 4.0F, 3.0F, 0.5F));
    EXPECT_EQ(at(2.25), cubic(-2.0F, 4.0F, 3.0F, 0.0F, 0.25F));
    EXPECT_EQ(at(3.75), cubic(4.0F, 3.0F, 0.0F, 0.0F, 0.75F));
    EXPECT_EQ(at(4.5), cubic(3.0F, 0.0F, 0.0F, 0.0F, 0.5F));
    EXPECT_EQ(at(5.5), 0.0F);
}

TEST(Interpolation, truncatesTowardZeroBeforeTheSample) {
    EXPECT_EQ(at(-0.75), cubic(0.0F, 1.0F, -2.0F, 4.0F, -0.75F));
    EXPECT_EQ(at(-1.75), cubic(0.0F, 0.0F, 1.0F, -2.0F, -0.75F));
    EXPECT_EQ(at(-2.5), cubic(0.0F, 0.0F, 0.0F, 1.0F, -0.5F));
    EXPECT_EQ(at(-3.5), 0.0F);
    EXPECT_EQ(at(-31.68), 0.0F);
}

TEST(Interpolation, farBeyondTheSampleThereIsSilence) {
    EXPECT_EQ(at(0x1p62), 0.0F);
    EXPECT_EQ(at(-0x1p63), 0.0F);
}

TEST(InterpolationDeathTest, aPositionThatFitsNoIntegerIsFatal) {
    EXPECT_DEATH(at(0x1p63), "position out of range");
    EXPECT_DEATH(at(std::numeric_limits<double>::quiet_NaN()), "position out of range");
}

} // namespace
} // namespace vornic
