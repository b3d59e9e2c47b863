#include "VornicCore/base/SplitMix64.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace vornic {
namespace {

static_assert(std::uniform_random_bit_generator<SplitMix64>);

/// A seed whose first draw is `value`: the step backwards.
std::uint64_t seedForFirst(std::uint64_t value) {
    const auto unshift = [](std::uint64_t z, unsigned shift) {
        std::uint64_t result = z;
        for (unsigned done = shift; done < 64; done += shift) {
            result = z ^ (result >> shift);
        }
        return result;
    };
    const auto inverse = [](std::uint64_t odd) {
        std::uint64_t result = odd;
        for (int i = 0; i < 6; ++i) {
            result *= 2 - odd * result;
        }
        return result;
    };
    std::uint64_t z = unshift(value, 31) * inverse(0x94d049bb133111eb);
    z = unshift(z, 27) * inverse(0xbf58476d1ce4e5b9);
    return unshift(z, 30) - 0x9e3779b97f4a7c15;
}

TEST(SplitMix64, givesThePublishedSequenceForSeedZero) {
    SplitMix64 random(0);
    EXPECT_EQ(random.next(), 0xe220a8397b1dcdafU);
    EXPECT_EQ(random.next(), 0x6e789e6aa1b965f4U);
    EXPECT_EQ(random.next(), 0x06c45d188009454fU);
}

TEST(SplitMix64, theStateWraps) {
    SplitMix64 random(0xffffffffffffffff);
    random.next();
    EXPECT_EQ(random.state, 0x9e3779b97f4a7c14U);
}

TEST(SplitMix64, aBoundedDrawIsTheHighWordOfTheProduct) {
    SplitMix64 bits(42);
    SplitMix64 draws(42);
    for (int i = 0; i < 100; ++i) {
        const std::uint64_t word = bits.next();
        // With a power of two nothing is ever redrawn.
        EXPECT_EQ(draws.next(std::uint64_t{1} << 20), word >> 44);
    }
}

TEST(SplitMix64, aDrawInTheSurplusIsDrawnAgain) {
    // 2^64 mod (2^63 + 1) is 2^63 - 1: the low word 0 of a first draw of 0 lies in the surplus.
    constexpr std::uint64_t bound = (std::uint64_t{1} << 63) + 1;
    SplitMix64 random(seedForFirst(0));
    SplitMix64 reference = random;
    ASSERT_EQ(reference.next(), 0U);
    const std::uint64_t drawn = random.next(bound);
    EXPECT_LT(drawn, bound);
    EXPECT_NE(random.state, reference.state) << "only one word was used";
}

TEST(SplitMix64, theLastWordOfTheSurplusIsDrawnAgain) {
    // Bound 3: the surplus is 2^64 mod 3 = 1 word, the low word 0.
    SplitMix64 random(seedForFirst(0));
    SplitMix64 reference = random;
    reference.next();
    random.next(3);
    EXPECT_NE(random.state, reference.state);
}

TEST(SplitMix64, aLowWordBelowTheBoundButBehindTheSurplusIsKept) {
    // Bound 3: the surplus is 2^64 mod 3 = 1; a first word of 0x5555555555555556 gives low word 2.
    SplitMix64 random(seedForFirst(0x5555555555555556));
    SplitMix64 reference = random;
    reference.next();
    EXPECT_EQ(random.next(3), 1U);
    EXPECT_EQ(random.state, reference.state);
}

TEST(SplitMix64, boundedDrawsReachEveryValueAboutEquallyOften) {
    SplitMix64 random(7);
    std::array<int, 6> seen{};
    for (int i = 0; i < 60'000; ++i) {
        ++seen[random.next(6)];
    }
    for (const int count : seen) {
        EXPECT_NEAR(count, 10'000, 500);
    }
    EXPECT_EQ(random.next(1), 0U);
}

TEST(SplitMix64DeathTest, aBoundOfZeroIsFatal) {
    SplitMix64 random(1);
    EXPECT_DEATH(random.next(0), "upper bound of 0");
}

TEST(SplitMix64, uniformFollowsItsFormula) {
    SplitMix64 random(11);
    SplitMix64 reference(11);
    for (int i = 0; i < 1000; ++i) {
        const auto step = static_cast<double>(reference.next((std::uint64_t{1} << 53) + 1));
        EXPECT_EQ(random.uniform(-1.5, 1.5), -1.5 + 3.0 * (step * 0x1p-53));
    }
}

TEST(SplitMix64, uniformReachesBothEnds) {
    // The smallest word lands in the surplus, so the smallest accepted one stands for the lower
    // end.
    SplitMix64 low(seedForFirst(0x7ff));
    EXPECT_EQ(low.uniform(2.0, 3.0), 2.0);
    SplitMix64 high(seedForFirst(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(high.uniform(2.0, 3.0), 3.0);
    EXPECT_EQ(high.uniform(0.25, 0.25), 0.25);
}

TEST(SplitMix64DeathTest, anImpossibleRangeIsFatal) {
    SplitMix64 random(1);
    EXPECT_DEATH(random.uniform(1.0, 0.5), "impossible range");
    EXPECT_DEATH(random.uniform(0.0, std::nan("")), "impossible range");
    EXPECT_DEATH(random.uniform(-1e308, 1e308), "impossible range");
}

} // namespace
} // namespace vornic
