#include "VornicCore/sampler/FrameStore.h"
#include "VornicCore/sampler/SampleBank.h"
#include "VornicCore/sampler/VoiceBank.h"
#include "tests/support/RealTimeGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace vornic {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<float> framesOf(const Sample& sample) {
    return {sample.data, sample.data + sample.length};
}

TEST(Velocity, hasThreeRawValues) {
    EXPECT_THAT(allVelocities, ElementsAre(Velocity::soft, Velocity::medium, Velocity::hard));
    EXPECT_EQ(velocityFromRawValue(0), Velocity::soft);
    EXPECT_EQ(velocityFromRawValue(1), Velocity::medium);
    EXPECT_EQ(velocityFromRawValue(2), Velocity::hard);
    EXPECT_FALSE(velocityFromRawValue(3));
    EXPECT_FALSE(velocityFromRawValue(-1));
}

TEST(VoiceBank, leavesOutWhatIsTooShortToSound) {
    VoiceBank bank;
    bank.add("a", {{0.1F}});
    EXPECT_THAT(bank.pool("a"), IsEmpty());
    EXPECT_THAT(bank.pools(), IsEmpty());
    bank.add("a", {{0.1F, 0.2F}, {}});
    ASSERT_EQ(bank.pool("a").size(), 1U);
    EXPECT_THAT(framesOf(bank.pool("a")[0]), ElementsAre(0.1F, 0.2F));
}

TEST(VoiceBank, aSecondAddReplacesThePoolAndKeepsTheEarlierFrames) {
    VoiceBank bank;
    bank.add("a", {{1.0F, 2.0F}, {3.0F, 4.0F}});
    const Sample earlier = bank.pool("a")[1];
    bank.add("a", {{5.0F, 6.0F, 7.0F}});
    ASSERT_EQ(bank.pool("a").size(), 1U);
    EXPECT_THAT(framesOf(bank.pool("a")[0]), ElementsAre(5.0F, 6.0F, 7.0F));
    EXPECT_THAT(framesOf(earlier), ElementsAre(3.0F, 4.0F));
}

TEST(FrameStore, keepsManySamplesInFewBlocks) {
    FrameStore store;
    std::vector<Sample> samples;
    samples.reserve(200);
    std::vector<float> frames(12000);
    std::int64_t allocations = 0;
    {
        const RealTimeGuard guard;
        for (int i = 0; i < 200; ++i) {
            std::ranges::fill(frames, static_cast<float>(i));
            samples.push_back(store.add(frames));
        }
        allocations = guard.allocations();
    }
    // Ten blocks, and the list of them, which grows.
    EXPECT_LE(allocations, 16);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        ASSERT_EQ(samples[i].length, 12000);
        EXPECT_EQ(samples[i].data[0], static_cast<float>(i));
        EXPECT_EQ(samples[i].data[11999], static_cast<float>(i));
    }
}

TEST(FrameStore, takesWhatIsLargerThanABlock) {
    FrameStore store;
    const Sample before = store.add(std::vector<float>{1.0F});
    const Sample large = store.add(std::vector<float>(1'000'000, 2.0F));
    const Sample after = store.add(std::vector<float>{3.0F});
    EXPECT_THAT(framesOf(before), ElementsAre(1.0F));
    EXPECT_EQ(large.length, 1'000'000);
    EXPECT_EQ(large.data[999'999], 2.0F);
    EXPECT_THAT(framesOf(after), ElementsAre(3.0F));
}

TEST(VoiceBank, freesReplacedFramesToo) {
    std::int64_t allocations = 0;
    std::int64_t frees = 0;
    {
        const RealTimeGuard guard;
        {
            VoiceBank bank;
            bank.add("a", {{1.0F, 2.0F}, {3.0F, 4.0F}});
            bank.add("a", {{5.0F, 6.0F}});
        }
        allocations = guard.allocations();
        frees = guard.frees();
    }
    EXPECT_EQ(allocations, frees);
    EXPECT_EQ(allocations > 0, RealTimeGuard::active());
}

TEST(VoiceBank, anAddWithoutAnythingToKeepChangesNothing) {
    VoiceBank bank;
    bank.add("a", {{1.0F, 2.0F}});
    bank.add("a", {{9.0F}, {}});
    ASSERT_EQ(bank.pool("a").size(), 1U);
    EXPECT_THAT(framesOf(bank.pool("a")[0]), ElementsAre(1.0F, 2.0F));
}

TEST(VoiceBank, copiesItsFrames) {
    std::vector<std::vector<float>> variations = {{1.0F, 2.0F}};
    VoiceBank bank;
    bank.add("a", variations);
    variations[0][0] = 9.0F;
    EXPECT_EQ(bank.pool("a")[0].data[0], 1.0F);
}

TEST(VoiceBank, anUnknownKeyHasNoPool) {
    EXPECT_THAT(VoiceBank().pool("nothing"), IsEmpty());
}

TEST(VoiceBank, keysNameSoundStabiliserAndVelocity) {
    EXPECT_EQ(VoiceBank::key("s", true, Velocity::soft), "s|stab|0");
    EXPECT_EQ(VoiceBank::key("alpha", false, Velocity::hard), "alpha|key|2");
    EXPECT_EQ(VoiceBank::releaseKey("s"), "s|release");
}

TEST(SampleBank, skipsEmptyArraysButKeepsTheKeyClass) {
    const SampleBank bank(
        {{KeyClass::regular, {{1.0F}, {}, {2.0F, 3.0F}}}, {KeyClass::space, {{}}}}, {{}, {4.0F}});
    ASSERT_EQ(bank.pool(KeyClass::regular).size(), 2U);
    EXPECT_THAT(framesOf(bank.pool(KeyClass::regular)[0]), ElementsAre(1.0F));
    EXPECT_THAT(framesOf(bank.pool(KeyClass::regular)[1]), ElementsAre(2.0F, 3.0F));
    ASSERT_TRUE(bank.samples().contains(KeyClass::space));
    EXPECT_THAT(bank.samples().at(KeyClass::space), IsEmpty());
    ASSERT_EQ(bank.releases().size(), 1U);
    EXPECT_THAT(framesOf(bank.releases()[0]), ElementsAre(4.0F));
}

TEST(SampleBank, fallsBackToTheRegularKeys) {
    const SampleBank bank({{KeyClass::regular, {{1.0F}}}, {KeyClass::space, {{}}}}, {});
    ASSERT_EQ(bank.pool(KeyClass::space).size(), 1U);
    EXPECT_EQ(bank.pool(KeyClass::space)[0].data, bank.pool(KeyClass::regular)[0].data);
    ASSERT_EQ(bank.pool(KeyClass::enter).size(), 1U);
    EXPECT_EQ(bank.pool(KeyClass::enter)[0].data, bank.pool(KeyClass::regular)[0].data);
}

TEST(SampleBank, withoutRegularKeysThereIsNothingToFallBackTo) {
    const SampleBank bank({{KeyClass::space, {{2.0F}}}}, {});
    EXPECT_THAT(bank.pool(KeyClass::enter), IsEmpty());
    EXPECT_EQ(bank.pool(KeyClass::space).size(), 1U);
    const SampleBank emptyRegular({{KeyClass::regular, {{}}}}, {});
    EXPECT_THAT(emptyRegular.pool(KeyClass::enter), IsEmpty());
}

} // namespace
} // namespace vornic
