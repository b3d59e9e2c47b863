#include "VornicCore/sampler/SamplerCore.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace vornic {
namespace {

TEST(SamplerEars, isAConstantPowerLawNormalisedToTheMiddle) {
    const auto middle = SamplerCore::ears(0.7F, 0.0F);
    EXPECT_FLOAT_EQ(middle.left, 0.7F);
    EXPECT_FLOAT_EQ(middle.right, 0.7F);
    const auto left = SamplerCore::ears(0.5F, -1.0F);
    EXPECT_FLOAT_EQ(left.left, 0.5F * std::numbers::sqrt2_v<float>);
    EXPECT_EQ(left.right, 0.0F);
    const auto right = SamplerCore::ears(0.5F, 1.0F);
    EXPECT_NEAR(right.left, 0.0, 1e-16);
    EXPECT_FLOAT_EQ(right.right, 0.5F * std::numbers::sqrt2_v<float>);
    for (const float pan : {-0.8F, -0.3F, 0.1F, 0.6F}) {
        const auto [l, r] = SamplerCore::ears(1.0F, pan);
        EXPECT_NEAR(l * l + r * r, 2.0F, 1e-6F) << pan;
    }
}

TEST(SamplerEars, limitsThePanAndTakesNotANumberAsRight) {
    const auto right = SamplerCore::ears(1.0F, 1.0F);
    for (const float pan :
         {2.0F, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(SamplerCore::ears(1.0F, pan).left, right.left) << pan;
        EXPECT_EQ(SamplerCore::ears(1.0F, pan).right, right.right) << pan;
    }
    EXPECT_EQ(SamplerCore::ears(1.0F, -7.0F).left, SamplerCore::ears(1.0F, -1.0F).left);
}

} // namespace
} // namespace vornic
