#include "VornicCore/strokes/Envelope.h"
#include "tests/VornicCore/strokes/PlainSlicer.h"
#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vornic {
namespace {

TEST(QuietestFifth, isNothingWithoutSamples) {
    EXPECT_EQ(quietestFifthRms({}), 0.0);
}

TEST(QuietestFifth, isTheQuietestSampleWhereThereAreFewerThanTen) {
    const std::vector<float> nine{0.5F, -0.25F, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(quietestFifthRms(nine), 0.25);
    // Ten are enough for a fifth of two.
    const std::vector<float> ten{0.5F, -0.25F, 1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(quietestFifthRms(ten), std::sqrt((0.25 + 0.0625) / 2));
}

TEST(QuietestFifth, takesAsManyOfEqualSamplesAsItNeeds) {
    const std::vector<float> samples{0, 0.5F, -0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F};
    EXPECT_EQ(quietestFifthRms(samples), std::sqrt(0.25 / 2));
}

TEST(QuietestFifth, isToTheLastBitWhatSortingEverythingGives) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        TypingNoise typing(0.2 + 0.01 * static_cast<double>(seed), 48000, 0.01F, seed);
        typing.hit(0.05, 0.8F).hit(0.15, 0.3F);
        EXPECT_EQ(quietestFifthRms(typing.samples()), plainQuietestFifthRms(typing.samples()));
    }
}

TEST(QuietestFifth, knowsTheSmallestAndTheLargestNumbers) {
    std::vector<float> samples(50, std::numeric_limits<float>::max());
    EXPECT_EQ(quietestFifthRms(samples), std::numeric_limits<double>::infinity());
    for (std::size_t i = 0; i < 10; ++i) {
        samples[i] = 1e-22F * static_cast<float>(i);
    }
    EXPECT_EQ(quietestFifthRms(samples), plainQuietestFifthRms(samples));
    EXPECT_GT(quietestFifthRms(samples), 0.0);
}

} // namespace
} // namespace vornic
