#include "VornicCore/strokes/Slicer.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/strokes/Envelope.h"
#include "tests/VornicCore/strokes/PlainSlicer.h"
#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace vornic {
namespace {

constexpr double rate = 48000;
constexpr float quiet = 1e-4F;

std::vector<Stroke> strokesIn(const TypingNoise& typing) {
    return Slicer::strokes(typing.samples(), rate);
}

float peakOf(const std::vector<float>& samples) {
    float peak = 0;
    for (const float x : samples) {
        peak = std::max(peak, std::abs(x));
    }
    return peak;
}

Stroke rated(double start, double snrDb, bool clean = true) {
    return {{0.5F}, start, snrDb, clean};
}

std::vector<double> startsOf(const std::vector<Stroke>& strokes) {
    std::vector<double> starts;
    for (const Stroke& stroke : strokes) {
        starts.push_back(stroke.start);
    }
    return starts;
}

TEST(Slicer, findsNothingInFiftyMilliseconds) {
    std::vector<float> samples = TypingNoise(0.06, rate, quiet).hit(0, 0.5F, 0.02).samples();
    samples.resize(2400);
    EXPECT_TRUE(Slicer::strokes(samples, rate).empty());
    samples.resize(2401);
    EXPECT_EQ(Slicer::strokes(samples, rate).size(), 1U);
}

TEST(Slicer, findsNothingInSilence) {
    EXPECT_TRUE(Slicer::strokes(std::vector<float>(48000), rate).empty());
    const Envelope envelope = envelopeOf(std::vector<float>(48000), rate);
    EXPECT_EQ(envelope.frames(), 1000);
    EXPECT_EQ(envelope.rms, std::vector<double>(1000, 1e-9));
}

TEST(Slicer, findsEveryHitInOrder) {
    TypingNoise typing(2, rate, quiet);
    typing.hit(1.5, 0.2F).hit(0.25, 0.5F).hit(0.75, 0.4F);
    const auto strokes = strokesIn(typing);
    ASSERT_EQ(strokes.size(), 3U);
    EXPECT_NEAR(strokes[0].start, 0.25, 0.002);
    EXPECT_NEAR(strokes[1].start, 0.75, 0.002);
    EXPECT_NEAR(strokes[2].start, 1.5, 0.002);
    for (const Stroke& stroke : strokes) {
        EXPECT_TRUE(stroke.clean);
        EXPECT_EQ(stroke.samples.size(), 10560U + 144U);
    }
    EXPECT_GT(strokes[0].snrDb, strokes[1].snrDb);
    EXPECT_GT(strokes[1].snrDb, strokes[2].snrDb);
}

TEST(Slicer, takesTheSlicesFromTheFilteredRecording) {
    const TypingNoise typing = TypingNoise(1, rate, quiet).hit(0.5, 0.5F);
    const auto filtered = withoutRumble(typing.samples(), rate);
    const auto strokes = strokesIn(typing);
    ASSERT_EQ(strokes.size(), 1U);
    const auto begin = static_cast<std::ptrdiff_t>(std::llround(strokes[0].start * rate)) - 144;
    EXPECT_TRUE(
        std::equal(strokes[0].samples.begin(), strokes[0].samples.end(), filtered.begin() + begin));
    EXPECT_NE(typing.samples(), filtered);
}

TEST(Slicer, dropsAnEchoAndEndsTheStrokeBeforeIt) {
    // 4.1 dB below.
    const auto strokes = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F).hit(0.5, 0.3118F));
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].start, 0.4);
    EXPECT_EQ(strokes[0].samples.size(), 24000U - 192U - (19200U - 144U));
}

TEST(Slicer, keepsAHitThatIsAtMostFourDecibelsQuieter) {
    // 3.9 dB below.
    const auto strokes = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F).hit(0.5, 0.3191F));
    EXPECT_EQ(startsOf(strokes), (std::vector<double>{0.4, 0.5}));
    EXPECT_EQ(strokes[0].samples.size(), 24000U - 192U - (19200U - 144U));
}

TEST(Slicer, keepsAQuietHitThatIsNoEchoAnyMore) {
    const auto at159 = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F).hit(0.559, 0.1F));
    EXPECT_EQ(startsOf(at159), std::vector<double>{0.4});
    const auto at160 = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F).hit(0.56, 0.1F));
    EXPECT_EQ(startsOf(at160), (std::vector<double>{0.4, 0.56}));
}

TEST(Slicer, neverCallsAStrokeCleanThatRunsIntoTheNextWithinSeventyMilliseconds) {
    // The slice ends 4 ms before the next onset.
    const auto at73 = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F, 0.03).hit(0.473, 0.5F));
    ASSERT_EQ(at73.size(), 2U);
    EXPECT_FALSE(at73[0].clean);
    EXPECT_GT(at73[0].snrDb, 60);
    EXPECT_EQ(startsOf(Slicer::best(at73, 16, 0)), std::vector<double>{at73[1].start});
    const auto at74 = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F, 0.03).hit(0.474, 0.5F));
    ASSERT_EQ(at74.size(), 2U);
    EXPECT_TRUE(at74[0].clean);
}

TEST(Slicer, dropsAStrokeOfThirtyMilliseconds) {
    // From 3 ms before the onset to 4 ms before the next: 30 ms and 31 ms.
    const auto at31 = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F, 0.02).hit(0.431, 0.5F));
    EXPECT_EQ(startsOf(at31), std::vector<double>{0.431});
    const auto at32 = strokesIn(TypingNoise(1, rate, quiet).hit(0.4, 0.5F, 0.02).hit(0.432, 0.5F));
    EXPECT_EQ(startsOf(at32), (std::vector<double>{0.4, 0.432}));
}

TEST(Slicer, neverCallsAClippedStrokeClean) {
    const auto recording = [](float level) {
        std::vector<float> samples(48000);
        samples[24000] = level;
        return samples;
    };
    // The level that leaves the filter as exactly 0.99, and the one before it.
    float level = 0.99F;
    while (withoutRumble(std::vector{level}, rate).front() < 0.99F) {
        level = std::nextafter(level, 2.0F);
    }
    ASSERT_EQ(peakOf(withoutRumble(recording(level), rate)), 0.99F);
    const auto clipped = Slicer::strokes(recording(level), rate);
    ASSERT_EQ(clipped.size(), 1U);
    EXPECT_FALSE(clipped[0].clean);
    const auto loud = Slicer::strokes(recording(std::nextafter(level, 0.0F)), rate);
    ASSERT_EQ(loud.size(), 1U);
    EXPECT_TRUE(loud[0].clean);
}

TEST(Slicer, slicesAnEarlyOnsetFromTheFirstSample) {
    const auto strokes = strokesIn(TypingNoise(1, rate, quiet).hit(0.002, 0.5F));
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].start, 0.002);
    EXPECT_EQ(strokes[0].samples.size(), 96U + 10560U);
}

TEST(Slicer, endsTheLastSliceWithTheRecording) {
    const auto strokes = strokesIn(TypingNoise(1, rate, quiet).hit(0.9, 0.5F));
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].samples.size(), 4800U + 144U);
}

TEST(Slicer, putsTheOnsetWhereASlowStrokeBeginsToRise) {
    // Seven steps up to the trigger, each of a millisecond, from just above the noise on.
    std::vector<float> samples = TypingNoise(1, rate, 1e-3F).samples();
    float level = 2e-3F;
    for (std::size_t i = 24000; i < 24336; ++i) {
        if (i % 48 == 0) {
            level *= 1.7F;
        }
        samples[i] += (i % 2 == 0 ? level : -level);
    }
    const auto strokes = Slicer::strokes(samples, rate);
    ASSERT_EQ(strokes.size(), 1U);
    EXPECT_EQ(strokes[0].start, 0.5);
}

TEST(Slicer, agreesWithThePlainAlgorithmOnTyping) {
    for (const double sampleRate : {8000.0, 22050.0, 44100.0, 48000.0, 96000.0}) {
        for (std::uint64_t seed = 1; seed <= 4; ++seed) {
            SplitMix64 random(seed);
            TypingNoise typing(3, sampleRate, 3e-3F, seed);
            for (double time = 0.1; time < 2.9; time += random.uniform(0.03, 0.3)) {
                typing.hit(time, static_cast<float>(random.uniform(0.02, 1.0)),
                           random.uniform(0.01, 0.2));
            }
            const auto plain = plainStrokes(typing.samples(), sampleRate);
            EXPECT_GT(plain.size(), 5U);
            EXPECT_EQ(Slicer::strokes(typing.samples(), sampleRate), plain);
        }
    }
}

TEST(Slicer, agreesWithThePlainAlgorithmOnWildLevels) {
    // At 1 kHz every sample is a frame, so all the thresholds are met from both sides.
    std::size_t found = 0;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        SplitMix64 random(seed);
        std::vector<float> samples;
        double level = -60;
        for (int i = 0; i < 1000; ++i) {
            level = random.next(12) == 0 ? random.uniform(-80, 0)
                                         : std::clamp(level + random.uniform(-6, 5), -80.0, 2.0);
            const double magnitude = std::pow(10.0, level / 20);
            samples.push_back(static_cast<float>(i % 2 == 0 ? magnitude : -magnitude));
        }
        const auto plain = plainStrokes(samples, 1000);
        found += plain.size();
        EXPECT_EQ(Slicer::strokes(samples, 1000), plain) << "seed " << seed;
    }
    EXPECT_GT(found, 1000U);
}

TEST(Slicer, agreesWithThePlainAlgorithmAtOddRatesAndLengths) {
    for (const double sampleRate : {1e-6, 0.5, 10.0, 19.9, 20.0, 999.0, 11025.5}) {
        for (const std::size_t count : {1U, 2U, 9U, 10U, 49U, 1500U}) {
            SplitMix64 random(count);
            std::vector<float> samples;
            for (std::size_t i = 0; i < count; ++i) {
                samples.push_back(static_cast<float>(random.uniform(-1, 1)));
            }
            EXPECT_EQ(Slicer::strokes(samples, sampleRate), plainStrokes(samples, sampleRate));
        }
    }
}

TEST(Slicer, countsSamplesThatAreNoFiniteNumberAsNothing) {
    TypingNoise typing(1, rate, quiet);
    typing.hit(0.5, 0.5F);
    std::vector<float> broken = typing.samples();
    std::vector<float> mended = typing.samples();
    for (const std::size_t i : {0U, 1000U, 24005U}) {
        broken[i] = i == 1000 ? std::numeric_limits<float>::infinity()
                              : std::numeric_limits<float>::quiet_NaN();
        mended[i] = 0;
    }
    EXPECT_EQ(Slicer::strokes(broken, rate), Slicer::strokes(mended, rate));
}

TEST(Slicer, survivesTheLargestSamples) {
    std::vector<float> samples(48000, std::numeric_limits<float>::max());
    for (std::size_t i = 0; i < samples.size(); i += 3) {
        samples[i] = -samples[i];
    }
    EXPECT_TRUE(Slicer::strokes(samples, rate).empty());
}

TEST(SlicerDeathTest, stopsAtARateThatIsNoNumber) {
    const std::vector<float> samples(100);
    EXPECT_DEATH(static_cast<void>(Slicer::strokes(samples, std::nan(""))), "rate of a recording");
    EXPECT_DEATH(static_cast<void>(Slicer::strokes(samples, HUGE_VAL)), "rate of a recording");
}

TEST(Slicer, findsNothingAtARateThatIsNotAboveZero) {
    const std::vector<float> samples = TypingNoise(1, rate, quiet).hit(0.5, 0.5F).samples();
    EXPECT_TRUE(Slicer::strokes(samples, 0).empty());
    EXPECT_TRUE(Slicer::strokes(samples, -48000).empty());
}

TEST(SlicerBest, putsTheHighestRatioFirstAndEqualOnesInOrder) {
    const std::vector<Stroke> strokes{rated(1, 40), rated(2, 50), rated(3, 40), rated(4, 60),
                                      rated(5, 50)};
    EXPECT_EQ(startsOf(Slicer::best(strokes, 16, 30)), (std::vector<double>{4, 2, 5, 1, 3}));
    EXPECT_EQ(startsOf(Slicer::best(strokes, 3, 30)), (std::vector<double>{4, 2, 5}));
    EXPECT_EQ(Slicer::bestPlaces(strokes, 3, 30), (std::vector<std::size_t>{3, 1, 4}));
}

TEST(SlicerBest, keepsOnlyCleanStrokesFromTheLeastRatioOn) {
    const std::vector<Stroke> strokes{rated(1, 30), rated(2, std::nextafter(30.0, 0.0)),
                                      rated(3, 90, false), rated(4, std::nan(""))};
    EXPECT_EQ(startsOf(Slicer::best(strokes, 16, 30)), std::vector<double>{1});
}

TEST(SlicerBest, returnsNothingForALimitOfNone) {
    const std::vector<Stroke> strokes{rated(1, 40)};
    EXPECT_TRUE(Slicer::best(strokes, 0, 30).empty());
    EXPECT_DEATH(static_cast<void>(Slicer::best(strokes, -1, 30)), "fewer than no strokes");
}

TEST(SlicerFinish, trimsTheTailAndThenLevels) {
    const auto strokes = strokesIn(TypingNoise(1, rate, quiet).hit(0.5, 0.25F));
    ASSERT_EQ(strokes.size(), 1U);
    std::vector<float> expected = strokes[0].samples;
    DSP::trimTail(expected, -42);
    DSP::level(expected, -21, -2);
    EXPECT_EQ(Slicer::finish(strokes[0].samples), expected);
    EXPECT_LT(expected.size(), strokes[0].samples.size());
    EXPECT_TRUE(Slicer::finish({}).empty());
}

TEST(Stroke, isEqualAndHashesByAllItsFields) {
    const std::hash<Stroke> hash;
    const Stroke stroke = rated(1, 40);
    EXPECT_EQ(hash(stroke), hash(rated(1, 40)));
    EXPECT_EQ(hash(rated(0.0, 40)), hash(rated(-0.0, 40)));
    for (const Stroke& other : {rated(2, 40), rated(1, 41), rated(1, 40, false),
                                Stroke{{0.25F}, 1, 40, true}, Stroke{{0.5F, 0.5F}, 1, 40, true}}) {
        EXPECT_NE(stroke, other);
        EXPECT_NE(hash(stroke), hash(other));
    }
}

} // namespace
} // namespace vornic
