#include "VornicCore/sampler/VoiceStage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vornic {
namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

TEST(VoiceStage, noneHasNoProcessing) {
    EXPECT_EQ(VoiceStage::none.itdFrames, 0.0F);
    EXPECT_EQ(VoiceStage::none.farLowpass, 0.0F);
    EXPECT_EQ(VoiceStage::none.farEar, 0);
}

TEST(VoiceStage, theMiddleIsNotBinaural) {
    for (const float pan : {0.0F, 0.01F, -0.01F, notANumber}) {
        EXPECT_EQ(VoiceStage::binaural(pan, 48000.0), VoiceStage::none) << pan;
    }
    EXPECT_NE(VoiceStage::binaural(0.0101F, 48000.0), VoiceStage::none);
}

TEST(VoiceStage, hardRightMakesTheLeftEarFar) {
    const VoiceStage stage = VoiceStage::binaural(1.0F, 48000.0);
    EXPECT_FLOAT_EQ(stage.itdFrames, 31.68F);
    EXPECT_NEAR(stage.farLowpass, 0.544, 0.0005);
    EXPECT_EQ(stage.farEar, 1);
}

TEST(VoiceStage, hardLeftMirrorsHardRight) {
    const VoiceStage right = VoiceStage::binaural(1.0F, 48000.0);
    const VoiceStage left = VoiceStage::binaural(-1.0F, 48000.0);
    EXPECT_EQ(left.farEar, 2);
    EXPECT_EQ(left.itdFrames, right.itdFrames);
    EXPECT_EQ(left.farLowpass, right.farLowpass);
}

TEST(VoiceStage, aPanBeyondTheSideCountsAsTheSide) {
    EXPECT_EQ(VoiceStage::binaural(3.0F, 48000.0), VoiceStage::binaural(1.0F, 48000.0));
}

TEST(VoiceStage, halfwayFollowsTheFormula) {
    const VoiceStage stage = VoiceStage::binaural(-0.5F, 44100.0);
    EXPECT_EQ(stage.itdFrames, static_cast<float>(44100.0 * (0.5 * 0.00066)));
    const double cutoff = 20000.0 - 14000.0 * 0.5;
    EXPECT_FLOAT_EQ(stage.farLowpass,
                    static_cast<float>(1.0 - std::exp(-2.0 * M_PI * cutoff / 44100.0)));
    EXPECT_EQ(VoiceStage::maxDelay, 0.00066);
}

} // namespace
} // namespace vornic
