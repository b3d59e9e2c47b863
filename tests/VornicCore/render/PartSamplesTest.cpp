#include "VornicCore/render/PartSamples.h"

#include "tests/VornicCore/render/NoiseStroke.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <span>
#include <vector>

namespace vornic {

namespace {

float peakOf(const std::vector<float>& samples) {
    float peak = 0;
    for (const float sample : samples) {
        peak = std::max(peak, std::abs(sample));
    }
    return peak;
}

std::vector<float> sine(double frequency, std::size_t frames) {
    std::vector<float> samples(frames);
    for (std::size_t n = 0; n < frames; ++n) {
        samples[n] = static_cast<float>(
            std::sin(2 * std::numbers::pi * frequency * static_cast<double>(n) / 48000));
    }
    return samples;
}

TEST(PartSamplesGate, cutsFadesAndScalesToAPeakOfOneHalf) {
    const std::vector<float> gated = PartSamples::gate(std::vector<float>(2000, -0.2F), 20);
    ASSERT_EQ(gated.size(), 960U);
    EXPECT_EQ(gated[671], -0.5F); // the last before the fade of 288 samples
    EXPECT_FLOAT_EQ(gated[672], -0.5F * 287 / 288);
    EXPECT_FLOAT_EQ(gated[958], -0.5F / 288);
    EXPECT_EQ(gated[959], 0.0F);
}

TEST(PartSamplesGate, fadesHalfOfAShortLayer) {
    const std::vector<float> gated = PartSamples::gate(std::vector<float>(10, 1), 20);
    const std::vector<float> expected{0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.4F, 0.3F, 0.2F, 0.1F, 0};
    ASSERT_EQ(gated.size(), expected.size());
    for (std::size_t n = 0; n < gated.size(); ++n) {
        EXPECT_FLOAT_EQ(gated[n], expected[n]) << n;
    }
}

TEST(PartSamplesGate, endsTheShortestLayersAtZeroAndLeavesOneSampleAlone) {
    EXPECT_EQ(PartSamples::gate(std::vector<float>{1, 1, 1}, 20),
              (std::vector<float>{0.5F, 0.5F, 0}));
    EXPECT_EQ(PartSamples::gate(std::vector<float>{-1, 1}, 20), (std::vector<float>{-0.5F, 0}));
    EXPECT_EQ(PartSamples::gate(std::vector<float>{0.1F}, 20), (std::vector<float>{0.5F}));
}

TEST(PartSamplesGate, leavesSilenceSilentAndNothingEmpty) {
    EXPECT_EQ(PartSamples::gate(std::vector<float>(5), 20), std::vector<float>(5));
    EXPECT_TRUE(PartSamples::gate(std::vector<float>{}, 20).empty());
}

TEST(PartSamplesGate, takesAnyLength) {
    const std::vector<float> samples(5, 1);
    EXPECT_EQ(PartSamples::gate(samples, 1e300).size(), 5U);
    EXPECT_TRUE(PartSamples::gate(samples, -1).empty());
    EXPECT_TRUE(PartSamples::gate(samples, std::numeric_limits<double>::quiet_NaN()).empty());
}

TEST(PartSamples, areShortAndPeakAtOneHalf) {
    const std::vector<float> stroke = noiseStroke(1);
    EXPECT_EQ(PartSamples::click(stroke).size(), 960U);
    EXPECT_EQ(PartSamples::spring(stroke).size(), 3360U);
    EXPECT_EQ(PartSamples::rattle(stroke).size(), 1680U);
    EXPECT_FLOAT_EQ(peakOf(PartSamples::click(stroke)), 0.5F);
    EXPECT_FLOAT_EQ(peakOf(PartSamples::spring(stroke)), 0.5F);
    EXPECT_FLOAT_EQ(peakOf(PartSamples::rattle(stroke)), 0.5F);
    EXPECT_TRUE(PartSamples::click({}).empty());
    EXPECT_TRUE(PartSamples::spring({}).empty());
    EXPECT_TRUE(PartSamples::rattle({}).empty());
}

TEST(PartSamples, springLeavesTheStrikeOut) {
    std::vector<float> strikeOnly(4000);
    std::fill_n(strikeOnly.begin(), 192, 1.0F);
    EXPECT_EQ(peakOf(PartSamples::spring(strikeOnly)), 0.0F);
    EXPECT_TRUE(PartSamples::spring(std::vector<float>(100, 1.0F)).empty());
}

// How loud a tone is in samples 300 to 600 of a layer.
double amplitude(const std::vector<float>& layer, double frequency) {
    double sine = 0;
    double cosine = 0;
    for (std::size_t n = 300; n < 600; ++n) {
        const double angle = 2 * std::numbers::pi * frequency * static_cast<double>(n) / 48000;
        sine += static_cast<double>(layer[n]) * std::sin(angle);
        cosine += static_cast<double>(layer[n]) * std::cos(angle);
    }
    return std::hypot(sine, cosine) / 150;
}

// How much a tone loses against another that was as loud, in dB. Both in whole periods of the 300
// samples: multiples of 160 Hz.
double lossDb(std::vector<float> (*extract)(std::span<const float>), double tone, double against) {
    std::vector<float> both = sine(tone, 4800);
    const std::vector<float> other = sine(against, 4800);
    for (std::size_t n = 0; n < both.size(); ++n) {
        both[n] += other[n];
    }
    const std::vector<float> layer = extract(both);
    return 20 * std::log10(amplitude(layer, against) / amplitude(layer, tone));
}

// From the formula of each filter: |H(against)| / |H(tone)|.
TEST(PartSamples, filterAsTheirPartSounds) {
    EXPECT_NEAR(lossDb(PartSamples::click, 480, 8000), 24.88, 0.3);
    EXPECT_NEAR(lossDb(PartSamples::rattle, 480, 8000), 28.88, 0.3);
    EXPECT_NEAR(lossDb(PartSamples::spring, 480, 3200), 19.98, 0.3);
    EXPECT_NEAR(lossDb(PartSamples::spring, 12800, 3200), 17.63, 0.3);
}

} // namespace

} // namespace vornic
