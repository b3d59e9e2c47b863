#include "VornicCore/sampler/SamplerCore.h"

#include "tests/VornicCore/sampler/SamplerFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace vornic {
namespace {

using testing::Each;
using testing::ElementsAre;

class SamplerCoreTest : public SamplerFixture {};

INSTANTIATE_TEST_SUITE_P(Mixers, SamplerCoreTest, everyMixer, mixerName);

const std::vector<float> fourFrames = {1.0F, 2.0F, 4.0F, 8.0F};
const std::vector<float> longTone(100'000, 0.5F);

TEST_P(SamplerCoreTest, silenceOverwritesTheBuffers) {
    const auto out = render(128);
    EXPECT_THAT(out.left, Each(0.0F));
    EXPECT_THAT(out.right, Each(0.0F));
    EXPECT_EQ(core.framesRendered(), 128);
    render(5);
    EXPECT_EQ(core.framesRendered(), 133);
}

TEST_P(SamplerCoreTest, aVoiceThatEndsLeavesNothingInItsSlot) {
    play(fourFrames, 0.7F, -0.4F, 0.9F);
    play(longTone, 0.6F, 0.3F, 1.1F);
    render(128);
    const auto isAsNew = [](const Voice& voice) {
        return voice.data == nullptr && voice.length == 0 && voice.position == 0.0 &&
               voice.rate == 1.0 && voice.gainLeft == 0.0F && voice.gainRight == 0.0F &&
               voice.itd == 0.0 && voice.farLowpass == 0.0F && voice.farState == 0.0F;
    };
    EXPECT_EQ(std::ranges::count_if(core.voices(), isAsNew), VoiceTable::slotCount - 1);
    core.clear();
    EXPECT_EQ(std::ranges::count_if(core.voices(), isAsNew), VoiceTable::slotCount);
}

TEST_P(SamplerCoreTest, aVoiceAtRateOneSoundsForOneFrameLessThanItsSample) {
    play(fourFrames);
    auto out = render(3);
    EXPECT_THAT(out.left, ElementsAre(1.0F, 2.0F, 4.0F));
    EXPECT_EQ(core.activeVoices(), 1) << "it ends when the next frame is due";
    out = render(2);
    EXPECT_THAT(out.left, Each(0.0F));
    EXPECT_EQ(core.activeVoices(), 0);
    EXPECT_EQ(core.keysStarted(), 1);
}

TEST_P(SamplerCoreTest, samplesBelowTwoFramesNeverSound) {
    const std::vector<float> nothing;
    const std::vector<float> two(2, 1.0F);
    play(nothing);
    core.play({.data = two.data(), .length = 1}, 1.0F, 0.0F, 1.0F, 0, VoiceStage::none);
    core.play({.data = nullptr, .length = 100}, 1.0F, 0.0F, 1.0F, 0, VoiceStage::none);
    const auto out = render(16);
    EXPECT_THAT(out.left, Each(0.0F));
    EXPECT_EQ(core.keysStarted(), 0);
    EXPECT_EQ(core.activeVoices(), 0);
    play(two);
    render(1);
    EXPECT_EQ(core.keysStarted(), 1);
}

TEST_P(SamplerCoreTest, interpolatesWithACatmullRomCubicAndSilenceAround) {
    play(fourFrames, 1.0F, 0.0F, 0.5F);
    const auto out = render(7);
    const auto cubic = [](float before, float x0, float x1, float x2) { // at one half
        return x0 + 0.5F * ((x1 - before) * 0.5F +
                            0.5F * ((before - 2.5F * x0 + 2.0F * x1 - 0.5F * x2) +
                                    0.5F * ((x2 - before) * 0.5F + (x0 - x1) * 1.5F)));
    };
    EXPECT_THAT(out.left, testing::Pointwise(testing::FloatEq(),
                                             {1.0F, cubic(0, 1, 2, 4), 2.0F, cubic(1, 2, 4, 8),
                                              4.0F, cubic(2, 4, 8, 0), 0.0F}));
}

TEST_P(SamplerCoreTest, queuedVoicesAllStartAtTheFirstFrameOfTheBuffer) {
    play(fourFrames, 1.0F, -1.0F);
    play(fourFrames, 0.5F, -1.0F);
    const auto out = render(1);
    EXPECT_FLOAT_EQ(out.left[0], 1.5F * std::numbers::sqrt2_v<float>);
    EXPECT_EQ(out.right[0], 0.0F);
    EXPECT_EQ(core.keysStarted(), 2);
}

TEST_P(SamplerCoreTest, aBufferOfNoFramesStillStartsVoices) {
    play(fourFrames);
    render(0);
    EXPECT_EQ(core.activeVoices(), 1);
    EXPECT_THAT(render(3).left, ElementsAre(1.0F, 2.0F, 4.0F));
}

TEST_P(SamplerCoreTest, everyKeyOfABurstIsStartedOrDropped) {
    const std::vector<float> longNote(4800, 0.1F);
    constexpr std::int64_t keys = 600; // more than the queue holds
    for (std::int64_t key = 0; key < keys; ++key) {
        play(longNote);
    }
    render(128);
    EXPECT_GT(core.eventsDropped(), 0);
    EXPECT_EQ(core.keysStarted() + core.eventsDropped(), keys);
}

TEST_P(SamplerCoreTest, aFullQueueLosesTheKey) {
    SamplerCore small(48000.0, 2, GetParam().mixer);
    const Sample sample{fourFrames.data(), 4};
    const auto play = [&] { return small.play(sample, 1.0F, 0.0F, 1.0F, 0, VoiceStage::none); };
    EXPECT_TRUE(play());
    EXPECT_TRUE(play());
    EXPECT_FALSE(play());
    EXPECT_EQ(small.eventsDropped(), 1);
    EXPECT_EQ(small.pushedEvents(), 2U);
    std::vector<float> buffer(8);
    small.render(4, buffer.data(), buffer.data() + 4, 0);
    EXPECT_EQ(small.keysStarted(), 2);
    EXPECT_TRUE(play());
}

TEST_P(SamplerCoreTest, recordsTheLatencyOfEventsFromBeforeTheBuffer) {
    const auto playAt = [&](std::uint64_t nanos) {
        core.play({fourFrames.data(), 4}, 1.0F, 0.0F, 1.0F, nanos, VoiceStage::none);
    };
    playAt(0);
    playAt(5'000'000);
    playAt(5'000'001);
    render(1, 5'000'000);
    EXPECT_EQ(vornic_latency_count(), 0U) << "unknown, equal or later times have no latency";
    playAt(5'000'001);
    render(1, 8'001'000);
    EXPECT_EQ(vornic_latency_count(), 1U);
    EXPECT_EQ(vornic_latency_last(), 3000U) << "whole microseconds, cut off";
    playAt(1);
    render(1, 0xffffffffffffffff);
    EXPECT_EQ(vornic_latency_last(), 0xffffffffU);
    playAt(1);
    render(1, 0);
    EXPECT_EQ(vornic_latency_count(), 2U) << "a buffer without a time records none";
}

TEST_P(SamplerCoreTest, staleEventsAreDroppedAndSettled) {
    const auto playAt = [&](std::uint64_t nanos) {
        core.play({.data = fourFrames.data(), .length = 4}, 1.0F, 0.0F, 1.0F, nanos,
                  VoiceStage::none);
    };
    playAt(999);
    playAt(1000);
    playAt(0); // has no time stamp, so it is never stale
    std::vector<float> buffer(8);
    core.render(1, buffer.data(), buffer.data() + 4, 5000, 1000);
    EXPECT_EQ(core.keysStarted(), 2);
    EXPECT_EQ(core.eventsDropped(), 1);
    EXPECT_EQ(vornic_latency_count(), 1U) << "a dropped event is not heard";
    EXPECT_EQ(core.settledEvents(), 1U);
}

TEST_P(SamplerCoreTest, theOldestOf48VoicesFadesOutForThe49th) {
    for (int i = 0; i < 48; ++i) {
        play(longTone, 0.01F);
    }
    render(10);
    EXPECT_EQ(core.activeVoices(), 48);
    play(longTone, 0.01F);
    render(1);
    EXPECT_EQ(core.activeVoices(), 48);
    EXPECT_EQ(core.fadingVoices(), 1);
    EXPECT_EQ(core.voicesStolen(), 1);
    EXPECT_EQ(core.keysStarted(), 49);
    ASSERT_NE(voice(1), nullptr);
    EXPECT_EQ(voice(1)->fadeLeft, 287) << "288 frames at 48 kHz, one of them rendered";
    EXPECT_EQ(voice(1), core.voices().data()) << "the oldest sits in the first slot";
    EXPECT_EQ(voice(49), &core.voices()[48]) << "the lowest free slot";
    render(287);
    EXPECT_EQ(core.fadingVoices(), 1) << "it ends when the next frame is due";
    render(1);
    EXPECT_EQ(core.fadingVoices(), 0);
    EXPECT_EQ(core.activeVoices(), 48);
    play(longTone, 0.01F);
    render(1);
    EXPECT_EQ(voice(50), core.voices().data()) << "the freed slot is the lowest one";
    EXPECT_NE(voice(2), nullptr);
    EXPECT_TRUE(voice(2)->fading());
}

TEST_P(SamplerCoreTest, aStolenVoiceFadesAlongAQuarterCosine) {
    const std::vector<float> one(1000, 1.0F);
    const std::vector<float> silence(1000, 0.0F);
    play(one);
    for (int i = 0; i < 48; ++i) {
        play(silence);
    }
    const auto out = render(300);
    for (int frame = 0; frame < 288; ++frame) {
        const double expected = std::cos(frame / 288.0 * std::numbers::pi / 2);
        ASSERT_NEAR(out.left[static_cast<std::size_t>(frame)], expected, 1e-6) << frame;
    }
    EXPECT_EQ(out.left[288], 0.0F);
    EXPECT_EQ(out.left[299], 0.0F);
}

TEST_P(SamplerCoreTest, withEverySlotBusyTheFadeNearestItsEndIsCut) {
    for (int i = 0; i < 48; ++i) {
        play(longTone, 0.01F);
    }
    for (int i = 0; i < 8; ++i) {
        play(longTone, 0.01F);
        render(10); // the fades end one after the other
    }
    EXPECT_EQ(core.activeVoices(), 48);
    EXPECT_EQ(core.fadingVoices(), 8);
    const Voice* const nearestItsEnd = voice(1);
    ASSERT_NE(nearestItsEnd, nullptr);
    EXPECT_EQ(nearestItsEnd->fadeLeft, 288 - 80);
    play(longTone, 0.01F);
    render(1);
    EXPECT_EQ(core.activeVoices(), 48);
    EXPECT_EQ(core.fadingVoices(), 8) << "one more began to fade, one was cut";
    EXPECT_EQ(voice(1), nullptr);
    EXPECT_EQ(nearestItsEnd->order, 57U);
    ASSERT_NE(voice(9), nullptr);
    EXPECT_EQ(voice(9)->fadeLeft, 287);
    EXPECT_EQ(core.eventsDropped(), 0);
}

TEST_P(SamplerCoreTest, theFarEarHearsAKeyLaterAndDuller) {
    std::vector<float> click(400, 0.0F);
    click[100] = 1.0F;
    const VoiceStage stage{.itdFrames = 20.0F, .farLowpass = 0.25F, .farEar = 1};
    play(click, 1.0F, 0.0F, 1.0F, stage);
    const auto out = render(200);
    EXPECT_FLOAT_EQ(out.right[100], 1.0F) << "the near ear hears it as it is";
    EXPECT_EQ(out.left[119], 0.0F);
    EXPECT_FLOAT_EQ(out.left[120], 0.25F);
    EXPECT_FLOAT_EQ(out.left[121], 0.25F * 0.75F);
    EXPECT_FLOAT_EQ(out.left[122], 0.25F * 0.75F * 0.75F);
}

TEST_P(SamplerCoreTest, everyFarEarButTheLeftIsTheRight) {
    std::vector<float> click(400, 0.0F);
    click[100] = 1.0F;
    for (const std::int32_t farEar : {2, 3, -1}) {
        core.clear();
        play(click, 1.0F, 0.0F, 1.0F, {.itdFrames = 20.0F, .farLowpass = 0.0F, .farEar = farEar});
        const auto out = render(200);
        EXPECT_FLOAT_EQ(out.left[100], 1.0F) << farEar;
        EXPECT_EQ(out.right[100], 0.0F) << farEar;
        EXPECT_FLOAT_EQ(out.right[120], 1.0F) << "without a coefficient nothing is filtered";
    }
}

TEST_P(SamplerCoreTest, theDelayedPositionTruncatesTowardZero) {
    // At frame 0 the far ear reads at -0.25, which is frame 0 and a fraction of -0.25.
    const std::vector<float> ramp = {0.0F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F};
    play(ramp, 1.0F, 0.0F, 1.0F, {.itdFrames = 0.25F, .farLowpass = 0.0F, .farEar = 1});
    const auto out = render(1);
    // x before = 0, x0 = 0, x1 = 1, x2 = 2 at t = -1/4.
    const float t = -0.25F;
    const float c1 = 0.5F;
    const float c2 = 2.0F - 1.0F;
    const float c3 = 1.0F - 1.5F;
    EXPECT_FLOAT_EQ(out.left[0], ((c3 * t + c2) * t + c1) * t);
}

TEST_P(SamplerCoreTest, settledEventsFollowTheQueueAndTheVoices) {
    EXPECT_EQ(core.pushedEvents(), 0U);
    EXPECT_EQ(core.settledEvents(), 0U);
    const std::vector<float> tooShort(1, 1.0F);
    play(tooShort);
    play(longTone);
    play(fourFrames);
    EXPECT_EQ(core.pushedEvents(), 3U);
    EXPECT_EQ(core.settledEvents(), 0U) << "nothing has left the queue";
    render(16);
    EXPECT_EQ(core.settledEvents(), 1U) << "the ignored one is settled, the long voice is not";
    for (int i = 0; core.activeVoices() > 0; ++i) {
        ASSERT_LT(i, 1000);
        EXPECT_EQ(core.settledEvents(), 1U);
        render(128);
    }
    EXPECT_EQ(core.settledEvents(), 3U);
}

TEST_P(SamplerCoreTest, aSlowVoiceKeepsItsEventUnsettledToItsEnd) {
    const std::vector<float> second(48'000, 0.1F);
    play(second, 1.0F, 0.0F, 1.0F / 64.0F);
    const std::int64_t length = std::int64_t{64} * (48'000 - 1);
    std::int64_t rendered = 0;
    while (rendered + 4096 <= length) {
        render(4096);
        rendered += 4096;
        ASSERT_EQ(core.settledEvents(), 0U) << rendered;
    }
    render(4096);
    EXPECT_EQ(core.settledEvents(), 1U);
}

TEST_P(SamplerCoreTest, aStolenVoiceSettlesWithItsFade) {
    for (int i = 0; i < 49; ++i) {
        play(longTone, 0.01F);
    }
    render(288);
    EXPECT_EQ(core.settledEvents(), 0U);
    render(1);
    EXPECT_EQ(core.settledEvents(), 1U);
}

TEST_P(SamplerCoreTest, anOverwrittenVoiceSettlesAtOnce) {
    for (int i = 0; i < 57; ++i) { // the 57th overwrites the first one that fades
        play(longTone, 0.01F);
    }
    render(1);
    EXPECT_EQ(core.settledEvents(), 1U);
}

TEST_P(SamplerCoreTest, clearForgetsQueueVoicesAndReflection) {
    core.setReflection(1.0F);
    play(longTone);
    render(256);
    play(longTone);
    core.clear();
    EXPECT_EQ(core.activeVoices(), 0);
    EXPECT_EQ(core.settledEvents(), core.pushedEvents());
    const auto out = render(512);
    EXPECT_THAT(out.left, Each(0.0F));
    EXPECT_THAT(out.right, Each(0.0F));
    EXPECT_EQ(core.keysStarted(), 1) << "a request from before the clear never starts";
    play(fourFrames);
    core.setReflection(0.0F);
    EXPECT_THAT(render(3).left, ElementsAre(1.0F, 2.0F, 4.0F));
}

class SamplerCoreDeathTest : public SamplerFixture {};

INSTANTIATE_TEST_SUITE_P(Mixers, SamplerCoreDeathTest, everyMixer, mixerName);

TEST_P(SamplerCoreDeathTest, programmingErrorsStopTheProgram) {
    float buffer = 0.0F;
    EXPECT_DEATH(core.render(-1, &buffer, &buffer, 0), "negative frame count");
    EXPECT_DEATH(core.play({&buffer, 0x1'0000'0000}, 1, 0, 1, 0, VoiceStage::none),
                 "length beyond 32 bits");
    EXPECT_DEATH(core.play({&buffer, -1}, 1, 0, 1, 0, VoiceStage::none), "length beyond 32 bits");
    EXPECT_DEATH(SamplerCore(48000.0, 0xffffffff), "no memory for the sampler's queue");
    EXPECT_DEATH(SamplerCore(std::nan(""), 2), "sample rate out of range");
}

TEST_P(SamplerCoreDeathTest, positionsThatAreNotFiniteStopTheProgram) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    play(longTone, 1.0F, 0.0F, -infinity);
    EXPECT_DEATH(render(2), "position out of range");
    core.clear();
    play(longTone, 1.0F, 0.0F, std::nanf(""));
    EXPECT_DEATH(render(2), "position out of range");
    core.clear();
    play(longTone, 1.0F, 0.0F, 1.0F, {.itdFrames = infinity, .farLowpass = 0.0F, .farEar = 1});
    EXPECT_DEATH(render(1), "position out of range");
    core.clear();
    play(longTone, 1.0F, 0.0F, -0x1p62F);
    EXPECT_DEATH(render(4), "position out of range");
    core.clear();
    play(longTone, 1.0F, 0.0F, infinity);
    render(2);
    EXPECT_EQ(core.activeVoices(), 0) << "beyond the sample's end a voice simply ends";
}

} // namespace
} // namespace vornic
