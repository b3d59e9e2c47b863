#include "VornicCore/sampler/EarlyReflection.h"

#include "tests/VornicCore/sampler/SamplerFixture.h"

#include <gmock/gmock.h>

#include <numbers>

namespace vornic {
namespace {

using testing::Each;

struct Stereo {
    std::vector<float> left, right;
};

/// One frame of 1 on the left and 0.5 on the right, then silence.
Stereo click(std::size_t frames) {
    Stereo out{.left = std::vector<float>(frames), .right = std::vector<float>(frames)};
    out.left[0] = 1.0F;
    out.right[0] = 0.5F;
    return out;
}

void process(EarlyReflection& reflection, Stereo& buffers, float level, float damp = 1.0F) {
    reflection.process(static_cast<std::int64_t>(buffers.left.size()), buffers.left.data(),
                       buffers.right.data(), level, damp);
}

TEST(EarlyReflection, comesBackTwiceUnequallyOnBothSides) {
    EarlyReflection reflection(48000.0);
    Stereo out = click(300);
    process(reflection, out, 0.5F); // a damping of 1 does not smooth the first tap
    EXPECT_EQ(out.left[0], 1.0F);
    EXPECT_EQ(out.left[119], 0.0F);
    EXPECT_FLOAT_EQ(out.left[120], 0.5F * 0.75F);
    EXPECT_FLOAT_EQ(out.right[120], 0.5F * 0.9F * 0.75F);
    EXPECT_EQ(out.left[121], 0.0F);
    EXPECT_EQ(out.left[263], 0.0F);
    EXPECT_FLOAT_EQ(out.left[264], 0.5F * 0.6F * 0.7F * 0.75F);
    EXPECT_FLOAT_EQ(out.right[264], 0.5F * 0.7F * 0.7F * 0.75F);
    // The second tap's coefficient is 0.7 times the damping.
    EXPECT_FLOAT_EQ(out.left[265], 0.5F * 0.6F * 0.7F * 0.3F * 0.75F);
}

TEST(EarlyReflection, theDampingSmoothsIt) {
    EarlyReflection reflection(48000.0);
    Stereo out = click(200);
    process(reflection, out, 1.0F, 0.35F);
    EXPECT_FLOAT_EQ(out.left[120], 0.35F * 0.75F);
    EXPECT_FLOAT_EQ(out.left[121], 0.35F * 0.65F * 0.75F);
}

TEST(EarlyReflection, hasAHistoryFromBeforeItWasTurnedOn) {
    EarlyReflection reflection(48000.0);
    Stereo off = click(100);
    process(reflection, off, 0.0F);
    EXPECT_EQ(off.left[0], 1.0F);
    EXPECT_EQ(off.left[99], 0.0F);
    Stereo on{.left = std::vector<float>(100), .right = std::vector<float>(100)};
    process(reflection, on, 1.0F);
    EXPECT_FLOAT_EQ(on.left[20], 0.75F);
}

TEST(EarlyReflection, goesOnAcrossTheEndOfItsHistory) {
    EarlyReflection reflection(48000.0);
    Stereo silence{.left = std::vector<float>(1000), .right = std::vector<float>(1000)};
    process(reflection, silence, 1.0F);
    Stereo out = click(300);
    process(reflection, out, 1.0F);
    EXPECT_FLOAT_EQ(out.left[120], 0.75F);
    EXPECT_FLOAT_EQ(out.left[264], 0.6F * 0.7F * 0.75F);
}

TEST(EarlyReflection, aTapBeyondTheHistoryWrapsOntoAMoreRecentFrame) {
    EarlyReflection reflection(192000.0); // taps at 480 and 1056, the history holds 1024
    Stereo out = click(600);
    process(reflection, out, 1.0F);
    EXPECT_FLOAT_EQ(out.left[32], 0.6F * 0.7F * 0.75F) << "1056 - 1024";
    EXPECT_GT(out.left[480], 0.7F);
}

class SamplerReflectionTest : public SamplerFixture {};

INSTANTIATE_TEST_SUITE_P(Mixers, SamplerReflectionTest, everyMixer, mixerName);

TEST_P(SamplerReflectionTest, isOffAtFirstWithADampingReadyToUse) {
    EXPECT_EQ(core.reflection(), 0.0F);
    EXPECT_EQ(core.reflectionDamp(), 0.35F);
}

TEST_P(SamplerReflectionTest, whileOffTheOutputIsTheSumOfTheVoices) {
    const std::vector<float> tone(1000, 0.25F);
    play(tone, 1.0F, -1.0F);
    play(tone, 2.0F, -1.0F);
    const auto out = render(500);
    const float one = 0.25F * std::numbers::sqrt2_v<float>;
    EXPECT_THAT(out.left, Each(one + 2.0F * one));
    EXPECT_THAT(out.right, Each(0.0F));
}

TEST_P(SamplerReflectionTest, turnedOnItReflectsWhatWasPlayedBefore) {
    std::vector<float> impulse(400, 0.0F);
    impulse[0] = 1.0F;
    play(impulse);
    render(64);
    core.setReflection(0.5F);
    core.setReflectionDamp(1.0F);
    const auto out = render(64);
    EXPECT_FLOAT_EQ(out.left[120 - 64], 0.5F);
    EXPECT_FLOAT_EQ(out.right[120 - 64], 0.45F);
}

} // namespace
} // namespace vornic
