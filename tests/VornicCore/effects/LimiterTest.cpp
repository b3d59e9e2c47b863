#include "VornicCore/effects/Limiter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace vornic {
namespace {

using Sound = std::vector<float>;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

void run(Limiter& limiter, Sound& left, Sound& right) {
    for (std::size_t i = 0; i < left.size(); i += 128) {
        limiter.process(std::min<std::size_t>(128, left.size() - i), left.data() + i,
                        right.data() + i);
    }
}

bool sameBits(const Sound& a, const Sound& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](float x, float y) {
        return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
    });
}

float largest(const Sound& sound) {
    float result = 0.0F;
    for (const float x : sound) {
        // Written so that a NaN becomes the result.
        result = std::abs(x) <= result ? result : std::abs(x);
    }
    return result;
}

Sound sine(std::size_t frames, double hz, double level) {
    Sound sound(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        sound[i] = static_cast<float>(
            level * std::sin(2.0 * std::numbers::pi * hz * static_cast<double>(i) / 48000.0));
    }
    return sound;
}

Sound noise(std::size_t frames, float level, std::uint_fast32_t seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(-level, level);
    Sound sound(frames);
    std::generate(sound.begin(), sound.end(), [&] { return value(random); });
    return sound;
}

// A click as keys make them: a hard strike and a decaying body.
Sound click(std::uint_fast32_t seed) {
    Sound sound = noise(7200, 1.0F, seed);
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double t = static_cast<double>(i) / 48000.0;
        sound[i] = static_cast<float>(static_cast<double>(sound[i]) * std::exp(-t / 0.004) +
                                      0.5 * std::exp(-t / 0.02) * std::sin(1400.0 * t));
    }
    return sound;
}

// The energy of all but the fundamental, against that of the fundamental, over whole periods.
double distortion(const Sound& sound, std::size_t from, std::size_t count, double hz) {
    std::complex<double> sum = 0.0;
    double all = 0.0;
    for (std::size_t i = from; i < from + count; ++i) {
        sum += static_cast<double>(sound[i]) *
               std::polar(1.0, -2.0 * std::numbers::pi * hz * static_cast<double>(i) / 48000.0);
        all += static_cast<double>(sound[i]) * static_cast<double>(sound[i]);
    }
    const double fundamental = 2.0 * std::norm(sum) / static_cast<double>(count);
    return std::sqrt(std::max(all - fundamental, 0.0) / fundamental);
}

TEST(Limiter, passesSoundUpToTheCeilingToTheBit) {
    Limiter limiter;
    Sound left = noise(48000, Limiter::ceiling, 1);
    Sound right = noise(48000, Limiter::ceiling, 2);
    left[10] = Limiter::ceiling;
    right[11] = -Limiter::ceiling;
    left[12] = -0.0F;
    left[13] = std::numeric_limits<float>::denorm_min();
    const Sound leftBefore = left;
    const Sound rightBefore = right;
    run(limiter, left, right);
    EXPECT_TRUE(sameBits(left, leftBefore));
    EXPECT_TRUE(sameBits(right, rightBefore));
}

TEST(Limiter, actsFromTheVeryFirstSampleAboveTheCeiling) {
    Limiter limiter;
    Sound left(128, 0.9F);
    Sound right(128, 0.1F);
    left[64] = std::nextafter(Limiter::ceiling, 1.0F);
    left[65] = 2.0F;
    run(limiter, left, right);
    EXPECT_EQ(left[63], 0.9F);
    EXPECT_LE(left[64], Limiter::ceiling);
    EXPECT_NEAR(left[64], Limiter::ceiling, 1e-6F);
    EXPECT_NEAR(left[65], Limiter::ceiling, 1e-6F);
    EXPECT_NEAR(left[66], 0.9F * 0.49F, 1e-6F);
}

TEST(Limiter, neverPassesTheCeilingWithFortyEightHardVoices) {
    // 48 clicks at full level and twice the gain: all at once, then in bursts of a few samples.
    for (const std::size_t spread : {0U, 1U, 7U, 61U, 480U}) {
        Sound left(60000);
        Sound right(60000);
        for (unsigned voice = 0; voice < 48; ++voice) {
            const Sound one = click(voice);
            const float pan = static_cast<float>(voice) / 47.0F;
            for (std::size_t i = 0; i < one.size(); ++i) {
                left[i + voice * spread] += 2.0F * (1.0F - pan) * one[i];
                right[i + voice * spread] += 2.0F * pan * one[i];
            }
        }
        ASSERT_GT(largest(left), 1.5F);
        Limiter limiter;
        run(limiter, left, right);
        EXPECT_LE(largest(left), Limiter::ceiling);
        EXPECT_LE(largest(right), Limiter::ceiling);
        EXPECT_GT(largest(left), 0.999F * Limiter::ceiling);
    }
}

TEST(Limiter, neverPassesTheCeilingWithAnythingFinite) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> exponent(-30.0F, 37.0F);
    Limiter limiter;
    for (int pass = 0; pass < 200; ++pass) {
        Sound left = noise(480, 1.0F, random());
        Sound right = noise(480, 1.0F, random());
        const float scale =
            std::pow(10.0F, pass % 2 == 0 ? exponent(random) : exponent(random) / 15);
        for (float& x : left) {
            x *= scale;
        }
        run(limiter, left, right);
        ASSERT_LE(largest(left), Limiter::ceiling);
        ASSERT_LE(largest(right), Limiter::ceiling);
    }
}

TEST(Limiter, sinesTwelveDecibelsOverKeepTheirShape) {
    // Measured once the first crests have set the gain: below 0.0002 per cent at all of them.
    for (const double hz : {50.0, 100.0, 997.0, 1000.0, 5000.0, 7333.0}) {
        Limiter limiter;
        Sound left = sine(96000, hz, 3.981);
        Sound right = left;
        run(limiter, left, right);
        const double measured = distortion(left, 48000, 48000, hz);
        EXPECT_LT(measured, 1e-5) << hz << " Hz";
        EXPECT_NEAR(largest(Sound(left.begin() + 48000, left.end())), Limiter::ceiling, 1e-5F);
    }
}

TEST(Limiter, keepsTheImageWhereItIs) {
    Limiter limiter;
    Sound left = noise(48000, 6.0F, 3);
    Sound right(left.size());
    std::transform(left.begin(), left.end(), right.begin(), [](float x) { return -0.25F * x; });
    run(limiter, left, right);
    for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_NEAR(right[i], -0.25F * left[i], 1e-6F);
    }
}

TEST(Limiter, returnsToExactlyOne) {
    Limiter limiter;
    Sound left = sine(4800, 500.0, 8.0);
    Sound right = left;
    run(limiter, left, right);
    EXPECT_LT(limiter.gain(), 0.2F);
    Sound quiet = noise(36000, 0.9F, 4);
    Sound other = noise(36000, 0.9F, 5);
    const Sound before = quiet;
    run(limiter, quiet, other);
    EXPECT_EQ(limiter.gain(), 1.0F);
    EXPECT_TRUE(
        sameBits(Sound(quiet.end() - 4800, quiet.end()), Sound(before.end() - 4800, before.end())));
}

TEST(Limiter, returnsToOneUnderSoundThatStaysAtTheCeiling) {
    Limiter limiter;
    Sound left(48000, Limiter::ceiling);
    Sound right(48000, -Limiter::ceiling);
    left[0] = 1.5F;
    run(limiter, left, right);
    EXPECT_EQ(limiter.gain(), 1.0F);
    EXPECT_EQ(left.back(), Limiter::ceiling);
}

TEST(Limiter, holdsThenRisesSmoothly) {
    Limiter limiter;
    Sound left(24000, 0.5F);
    Sound right(24000, 0.5F);
    left[0] = 2.0F * Limiter::ceiling;
    run(limiter, left, right);
    EXPECT_EQ(left[1], 0.25F);
    EXPECT_EQ(Limiter::holdFrames, 576U) << "12 ms";
    EXPECT_EQ(left[Limiter::holdFrames], 0.25F);
    EXPECT_GT(left[Limiter::holdFrames + 1], 0.25F);
    // One time constant later the missing half of the gain has shrunk to its e-th part.
    const std::size_t later =
        Limiter::holdFrames + static_cast<std::size_t>(Limiter::releaseMs * 48.0);
    EXPECT_NEAR(left[later], 0.5 * (1.0 - 0.5 * std::exp(-1.0)), 1e-3);
    for (std::size_t i = 1; i < left.size(); ++i) {
        ASSERT_GE(left[i], left[i - 1] - (i == 1 ? 1.0F : 0.0F));
        ASSERT_LT(left[i] - left[i - 1], 2e-4F);
    }
}

TEST(Limiter, wildSamplesBecomeSilenceAndChangeNothingElse) {
    for (const float wild : {notANumber, infinity, -infinity}) {
        Limiter limiter;
        Sound left = noise(4800, 0.9F, 6);
        Sound right = noise(4800, 0.9F, 7);
        Sound leftExpected = left;
        const Sound rightExpected = right;
        left[100] = wild;
        leftExpected[100] = 0.0F;
        run(limiter, left, right);
        EXPECT_TRUE(sameBits(left, leftExpected));
        EXPECT_TRUE(sameBits(right, rightExpected));
    }
    Limiter limiter;
    Sound left(1280, notANumber);
    Sound right(1280, infinity);
    run(limiter, left, right);
    EXPECT_EQ(largest(left), 0.0F);
    EXPECT_EQ(largest(right), 0.0F);
    EXPECT_EQ(limiter.gain(), 1.0F);
}

TEST(Limiter, aWildButFiniteSampleSilencesNothingForLong) {
    Limiter limiter;
    Sound left(24000, 0.5F);
    Sound right(24000, 0.5F);
    left[0] = 3e38F;
    run(limiter, left, right);
    EXPECT_EQ(left[0], Limiter::ceiling);
    EXPECT_GT(left[7200], 0.45F);
}

TEST(Limiter, isTheSameForAnyDivisionIntoBlocks) {
    Limiter a;
    Limiter b;
    Sound left = noise(20000, 2.0F, 8);
    std::fill(left.begin() + 6000, left.begin() + 14000, 0.1F);
    Sound right = noise(20000, 1.0F, 9);
    Sound leftParts = left;
    Sound rightParts = right;
    run(a, left, right);
    std::mt19937 random(3);
    for (std::size_t i = 0; i < leftParts.size();) {
        const std::size_t count = std::min<std::size_t>(random() % 300, leftParts.size() - i);
        b.process(count, leftParts.data() + i, rightParts.data() + i);
        i += count;
    }
    EXPECT_TRUE(sameBits(left, leftParts));
    EXPECT_TRUE(sameBits(right, rightParts));
}

TEST(Limiter, resetForgetsThePast) {
    Limiter limiter;
    Sound left(128, 4.0F);
    Sound right(128, 4.0F);
    run(limiter, left, right);
    limiter.reset();
    Sound next(128, 0.9F);
    Sound other(128, 0.9F);
    run(limiter, next, other);
    EXPECT_EQ(next[0], 0.9F);
}

} // namespace
} // namespace vornic
