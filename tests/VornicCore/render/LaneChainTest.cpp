#include "VornicCore/render/LaneChain.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

ChainParams ringing(std::vector<DSP::Mode> modes, double mix = 0.5) {
    ChainParams chain;
    chain.bodyModes = std::move(modes);
    chain.bodyMix = mix;
    return chain;
}

DSP::Mode mode(double decayMs) {
    return {.frequency = 300, .decayMs = decayMs, .gainDb = 0};
}

TEST(LaneBody, ringsThreeTimesItsLongestDecay) {
    EXPECT_EQ(LaneBody(ringing({mode(10)})).tail, 1440);
    EXPECT_EQ(LaneBody(ringing({mode(10), mode(25), mode(20)})).tail, 3600);
}

TEST(LaneBody, ringsTenSecondsAtMost) {
    EXPECT_EQ(LaneBody(ringing({mode(1e6)})).tail, 480000);
    EXPECT_EQ(LaneBody(ringing({mode(1e300)})).tail, 480000);
}

TEST(LaneBody, isNoneWithoutAShareOfTheSound) {
    const LaneBody body(ringing({mode(10)}, 0));
    EXPECT_TRUE(body.modes.empty());
    EXPECT_EQ(body.tail, 0);
}

} // namespace
} // namespace vornic
