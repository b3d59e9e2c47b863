#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <ebur128.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace vornic {
namespace {

/// Another implementation of the same recommendation.
double momentaryLoudness(Buffer samples) {
    samples.resize(19'200, 0.0F);
    ebur128_state* state = ebur128_init(1, 48'000, EBUR128_MODE_M);
    ebur128_add_frames_float(state, samples.data(), samples.size());
    double loudness = 0.0;
    ebur128_loudness_momentary(state, &loudness);
    ebur128_destroy(&state);
    return loudness;
}

double loudness(const Buffer& samples) {
    return DSP::loudnessOfPower(DSP::weightedPower(samples));
}

TEST(Loudness, isThatOfTheRecommendation) {
    for (const double hz : {60.0, 200.0, 1000.0, 4000.0, 12000.0}) {
        const Buffer tone = sine(19'200, hz, 0.3);
        EXPECT_NEAR(loudness(tone), momentaryLoudness(tone), 0.1) << hz;
    }
    EXPECT_NEAR(loudness(stroke()), momentaryLoudness(stroke()), 0.1);
    EXPECT_NEAR(loudness(stroke(600)), momentaryLoudness(stroke(600)), 0.1);
}

TEST(Loudness, hearsTheSameStrengthLouderWhereTheEarIsKeen) {
    EXPECT_GT(loudness(sine(19'200, 3000, 0.3)), loudness(sine(19'200, 60, 0.3)) + 3);
}

TEST(Loudness, tenDecibelsAreTenDecibels) {
    Buffer quiet = stroke();
    for (float& sample : quiet) {
        sample *= std::pow(10.0F, -0.5F);
    }
    EXPECT_NEAR(loudness(stroke()) - loudness(quiet), 10.0, 0.01);
}

TEST(Loudness, whatComesLaterThanAStrokeLastsCountsForNothing) {
    Buffer longer = stroke(19'200);
    longer.resize(48'000, 0.5F);
    EXPECT_EQ(loudness(longer), loudness(stroke(19'200)));
}

TEST(Loudness, ofNothingIsMinusInfinity) {
    EXPECT_EQ(loudness({}), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(loudness(Buffer(100, 0.0F)), -std::numeric_limits<double>::infinity());
}

} // namespace
} // namespace vornic
