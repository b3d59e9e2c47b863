#include "VornicCore/dsp/DSP.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace vornic {
namespace {

using DSP::Mode;

Buffer pulse(std::size_t count) {
    Buffer sound(count);
    sound[0] = 1.0F;
    return sound;
}

TEST(Body, silenceStaysAsItIs) {
    Buffer sound(480);
    DSP::body(sound, {Mode{.frequency = 400.0, .decayMs = 100.0, .gainDb = 0.0}}, 0.5);
    EXPECT_EQ(sound, Buffer(480));
}

TEST(Body, withoutMixModesOrSoundChangesNothing) {
    const Buffer before = noise(480, 1.0F);
    for (const double mix : {0.0, -1.0, notANumber}) {
        Buffer sound = before;
        DSP::body(sound, {Mode{.frequency = 400.0, .decayMs = 100.0, .gainDb = 0.0}}, mix);
        EXPECT_EQ(sound, before);
    }
    Buffer sound = before;
    DSP::body(sound, {}, 1.0);
    EXPECT_EQ(sound, before);
    Buffer none;
    DSP::body(none, {Mode{.frequency = 400.0, .decayMs = 100.0, .gainDb = 0.0}}, 1.0);
    EXPECT_TRUE(none.empty());
}

TEST(Body, growsByThreeTimesTheLongestDecay) {
    Buffer sound = noise(480, 1.0F);
    DSP::body(sound,
              {Mode{.frequency = 900.0, .decayMs = 20.0, .gainDb = 6.0},
               Mode{.frequency = 400.0, .decayMs = 100.0, .gainDb = 0.0}},
              0.5);
    EXPECT_EQ(sound.size(), 480U + 14400U);
}

TEST(Body, ringsAtItsFrequencyAndDecaysInItsTime) {
    Buffer sound = pulse(10);
    DSP::body(sound, {Mode{.frequency = 440.0, .decayMs = 100.0, .gainDb = 0.0}}, 1.0);
    const auto part = [&](std::size_t from) {
        return Buffer(sound.begin() + static_cast<std::ptrdiff_t>(from),
                      sound.begin() + static_cast<std::ptrdiff_t>(from) + 2400);
    };
    // One decay time later the level has fallen to its e-th part.
    EXPECT_NEAR(std::abs(fourier(part(7200), 440.0)) / std::abs(fourier(part(2400), 440.0)),
                std::exp(-1.0), 0.001);
    // The strongest of all frequencies is that of the mode.
    double best = 0.0;
    double bestHz = 0.0;
    for (double hz = 400.0; hz < 480.0; hz += 1.0) {
        const double level = std::abs(fourier(sound, hz));
        if (level > best) {
            best = level;
            bestHz = hz;
        }
    }
    EXPECT_NEAR(bestHz, 440.0, 1.0);
}

TEST(Body, addsTheModesAsTheFormulaSays) {
    const std::vector<Mode> modes{Mode{.frequency = 180.0, .decayMs = 40.0, .gainDb = 3.0},
                                  Mode{.frequency = 950.0, .decayMs = 12.0, .gainDb = -6.0},
                                  Mode{.frequency = 30000.0, .decayMs = 5.0, .gainDb = 0.0}};
    const Buffer before = stroke(2000);
    Buffer sound = before;
    DSP::body(sound, modes, 0.7);
    ASSERT_EQ(sound.size(), 2000U + 5760U);
    std::vector<double> wet(sound.size());
    for (const Mode& mode : modes) {
        const double r = std::exp(-1.0 / (mode.decayMs * 48.0));
        const double c =
            std::cos(2.0 * std::numbers::pi * std::min(mode.frequency, 21600.0) / 48000.0);
        std::vector<double> y(sound.size());
        for (std::size_t n = 0; n < y.size(); ++n) {
            const double x = n < before.size() ? static_cast<double>(before[n]) : 0.0;
            y[n] = std::pow(10.0, mode.gainDb / 20.0) * (1.0 - r) * x +
                   (n > 0 ? 2.0 * r * c * y[n - 1] : 0.0) - (n > 1 ? r * r * y[n - 2] : 0.0);
            wet[n] += y[n];
        }
    }
    const double wetPeak =
        std::abs(*std::ranges::max_element(wet, {}, [](double x) { return std::abs(x); }));
    const double k = 0.7 * static_cast<double>(largest(before)) / wetPeak;
    for (std::size_t n = 0; n < sound.size(); ++n) {
        const double dry = n < before.size() ? static_cast<double>(before[n]) : 0.0;
        ASSERT_NEAR(sound[n], dry + k * wet[n], 1e-6) << n;
    }
}

TEST(Body, theWetPeakIsTheDryPeakTimesTheMix) {
    Buffer sound = pulse(1);
    DSP::body(sound, {Mode{.frequency = 300.0, .decayMs = 50.0, .gainDb = -20.0}}, 0.25);
    sound[0] -= 1.0F;
    EXPECT_NEAR(largest(sound), 0.25, 1e-6);
}

TEST(Body, hostileModesNeitherCrashNorAskForAllMemory) {
    for (const double value : hostileValues) {
        for (const Mode& mode : {Mode{.frequency = value, .decayMs = 50.0, .gainDb = 0.0},
                                 Mode{.frequency = 400.0, .decayMs = value, .gainDb = 0.0},
                                 Mode{.frequency = 400.0, .decayMs = 50.0, .gainDb = value},
                                 Mode{.frequency = value, .decayMs = value, .gainDb = value}}) {
            Buffer sound = stroke(500);
            DSP::body(sound, {mode, Mode{.frequency = 200.0, .decayMs = 10.0, .gainDb = 0.0}}, 0.5);
            EXPECT_LE(static_cast<double>(sound.size()), 500.0 + DSP::longestTail);
            EXPECT_TRUE(std::ranges::all_of(sound, [](float x) { return std::isfinite(x); }))
                << value;
        }
        Buffer sound = stroke(500);
        DSP::body(sound, {Mode{.frequency = 400.0, .decayMs = 10.0, .gainDb = 0.0}}, value);
        EXPECT_LE(sound.size(), 500U + 1440U);
    }
}

} // namespace
} // namespace vornic
