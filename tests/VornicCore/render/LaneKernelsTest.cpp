#include "VornicCore/render/LaneKernels.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/render/FinishStroke.h"
#include "tests/VornicCore/render/NoiseStroke.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace vornic {

namespace {

class LaneKernelsTest : public testing::TestWithParam<const LaneKernels*> {};

TEST_P(LaneKernelsTest, tanhStaysWithinItsStatedErrorAndIsOdd) {
    const auto tanh = GetParam()->tanh;
    for (double x = 1e-9; x < 400; x *= 1.003) {
        EXPECT_NEAR(tanh(x) / std::tanh(x), 1, 1e-7) << x;
        EXPECT_EQ(tanh(-x), -tanh(x)) << x;
    }
    EXPECT_EQ(tanh(0), 0);
    EXPECT_EQ(tanh(1e300), tanh(9));
}

TEST_P(LaneKernelsTest, peakIsTheLargestMagnitudeWhereverItIs) {
    const auto peak = GetParam()->peak;
    EXPECT_EQ(peak(nullptr, 0), 0.0F);
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::vector<float> samples(length, 0.25F);
            samples[place] = -0.75F;
            EXPECT_EQ(peak(samples.data(), std::ssize(samples)), 0.75F) << length << ", " << place;
        }
    }
}

TEST_P(LaneKernelsTest, peakIsNotFiniteIfASampleIsNot) {
    for (const float value :
         {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity()}) {
        std::vector<float> samples(21, 0.5F);
        samples[3] = value;
        EXPECT_FALSE(std::isfinite(GetParam()->peak(samples.data(), 21)));
        EXPECT_FALSE(std::isfinite(GetParam()->peak(samples.data(), 4)));
    }
}

TEST_P(LaneKernelsTest, almostSilenceIsNotMadeLoud) {
    // Below an RMS of 1e-7 the strike is no strike, and no gain would make it one.
    std::vector<float> samples(4000, 0.9e-7F);
    const std::vector<float> before = samples;
    const std::vector<float> finished = finishedStroke(samples, 0.0, *GetParam());
    ASSERT_EQ(finished.size(), before.size());
    EXPECT_EQ(finished.front(), before.front());
}

TEST_P(LaneKernelsTest, resamplesToTheEndsOfTheBuffer) {
    for (const std::size_t length : {2U, 3U, 5U, 9U, 40U, 1000U}) {
        const std::vector<float> input = noiseStroke(3, length, 0);
        for (const double semitones : {-36.0, -12.0, -0.3, 0.01, 0.7, 12.0, 36.0}) {
            const std::vector<float> expected = DSP::resample(input, semitones);
            // Around the output lies what must not change.
            std::vector<float> output(expected.size() + 8, 7.0F);
            GetParam()->resample({.input = input.data(),
                                  .length = std::ssize(input),
                                  .ratio = std::pow(2.0, semitones / 12.0),
                                  .output = output.data() + 4,
                                  .outputLength = std::ssize(expected)});
            for (std::size_t n = 0; n < expected.size(); ++n) {
                ASSERT_NEAR(output[n + 4], expected[n], 1e-6)
                    << length << ", " << semitones << ", " << n;
            }
            for (std::size_t n = 0; n < 4; ++n) {
                EXPECT_EQ(output[n], 7.0F);
                EXPECT_EQ(output[output.size() - 1 - n], 7.0F);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(OfThisProcessor, LaneKernelsTest, testing::Values(&laneKernels()),
                         [](const auto&) { return "kernels"; });
INSTANTIATE_TEST_SUITE_P(Portable, LaneKernelsTest, testing::Values(&portableLaneKernels()),
                         [](const auto&) { return "kernels"; });

} // namespace

} // namespace vornic
