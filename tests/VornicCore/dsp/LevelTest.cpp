#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vornic {
namespace {

double rmsOfStrike(const Buffer& sound) {
    double sum = 0.0;
    const std::size_t count = std::min<std::size_t>(sound.size(), 1920);
    for (std::size_t i = 0; i < count; ++i) {
        sum += static_cast<double>(sound[i]) * static_cast<double>(sound[i]);
    }
    return std::sqrt(sum / static_cast<double>(count));
}

TEST(Level, silenceStaysAsItIs) {
    Buffer silence(3000);
    DSP::level(silence, -20.0, -1.0);
    EXPECT_EQ(silence, Buffer(3000));
    const Buffer faint(3000, 9.9e-8F);
    Buffer sound = faint;
    DSP::level(sound, -20.0, -1.0);
    EXPECT_EQ(sound, faint);
    Buffer none;
    DSP::level(none, -20.0, -1.0);
    EXPECT_TRUE(none.empty());
}

TEST(Level, justAboveSilenceIsRaised) {
    Buffer sound(3000, 2e-7F);
    DSP::level(sound, -20.0, -1.0);
    EXPECT_NEAR(sound[0], 0.1, 1e-6);
}

TEST(Level, bringsTheStrikeToTheTarget) {
    for (const std::size_t length : {500U, 1920U, 9600U}) {
        Buffer sound = stroke(length);
        DSP::level(sound, -20.0, 20.0);
        EXPECT_NEAR(rmsOfStrike(sound), 0.1, 1e-6);
    }
}

TEST(Level, measuresTheFirstFortyMillisecondsOnly) {
    Buffer sound(9600, 0.01F);
    std::fill(sound.begin() + 1920, sound.end(), 0.02F);
    DSP::level(sound, -20.0, 0.0);
    EXPECT_NEAR(sound[0], 0.1, 1e-6);
    EXPECT_NEAR(sound[1920], 0.2, 1e-6);
}

TEST(Level, aPeakOverTheCeilingLandsOnIt) {
    Buffer sound(9600, 0.1F);
    // Behind the strike, where only the peak of the whole can see it.
    sound[5000] = -0.8F;
    DSP::level(sound, 0.0, -6.0);
    const auto ceiling = static_cast<float>(std::pow(10.0, -6.0 / 20.0));
    EXPECT_FLOAT_EQ(largest(sound), ceiling);
    EXPECT_FLOAT_EQ(sound[0], ceiling / 8.0F);
}

TEST(Level, aSecondTimeChangesNothingMore) {
    Buffer once = stroke();
    DSP::level(once, -23.0, -1.0);
    Buffer twice = once;
    DSP::level(twice, -23.0, -1.0);
    for (std::size_t i = 0; i < once.size(); ++i) {
        ASSERT_NEAR(twice[i], once[i], 1e-6);
    }
}

TEST(Level, hostileLevelsNeverMakeNoNumber) {
    for (const double target : hostileValues) {
        for (const double ceiling : hostileValues) {
            Buffer sound = stroke(500);
            sound[9] = 0.0F;
            DSP::level(sound, target, ceiling);
            EXPECT_TRUE(std::ranges::none_of(sound, [](float x) { return std::isnan(x); }));
        }
    }
}

} // namespace
} // namespace vornic
