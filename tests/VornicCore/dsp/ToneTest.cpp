#include "VornicCore/dsp/Tone.h"

#include "VornicCore/dsp/Biquad.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace vornic {
namespace {

using DSP::Biquad;
using Band = Equalizer::Band;
using Kind = Biquad::Kind;

struct BandCase {
    Band band;
    Kind kind;
    double frequency;
    double q;
};

constexpr std::array bands{
    BandCase{.band = Band::bass, .kind = Kind::lowShelf, .frequency = 100.0, .q = 0.707},
    BandCase{.band = Band::body, .kind = Kind::peak, .frequency = 250.0, .q = 1.1},
    BandCase{.band = Band::clack, .kind = Kind::peak, .frequency = 1200.0, .q = 1.1},
    BandCase{.band = Band::click, .kind = Kind::peak, .frequency = 3500.0, .q = 1.1},
    BandCase{.band = Band::air, .kind = Kind::highShelf, .frequency = 9000.0, .q = 0.707},
};

TEST(Tone, withNothingToDoLeavesEveryBit) {
    const Buffer before = noise(1000, 1.0F);
    Buffer sound = before;
    sound[3] = -0.0F;
    DSP::tone(sound, Equalizer::flat(), 15.0, 19000.0);
    EXPECT_TRUE(std::signbit(sound[3]));
    sound[3] = before[3];
    EXPECT_EQ(sound, before);
    DSP::tone(sound, Equalizer::flat(), -1.0, 1e9);
    EXPECT_EQ(sound, before);
}

TEST(Tone, eachBandIsItsOwnFilter) {
    for (const BandCase& one : bands) {
        Equalizer eq = Equalizer::flat();
        eq.gains[one.band] = 7.0F;
        Buffer sound = noise(2000, 0.5F);
        Buffer expected = sound;
        Biquad(one.kind, one.frequency, one.q, 7.0).run(expected);
        DSP::tone(sound, eq, 0.0, 20000.0);
        EXPECT_EQ(sound, expected) << one.frequency;
    }
}

TEST(Tone, aBandWithoutAnEntryIsFlat) {
    Equalizer eq = Equalizer::flat();
    eq.gains.clear();
    eq.gains[Band::air] = -4.0F;
    Buffer sound = noise(2000, 0.5F);
    Buffer expected = sound;
    Biquad(Kind::highShelf, 9000.0, 0.707, -4.0).run(expected);
    DSP::tone(sound, eq, 0.0, 20000.0);
    EXPECT_EQ(sound, expected);
}

TEST(Tone, sectionsRunInTheirOrder) {
    Equalizer eq = Equalizer::flat();
    float gain = 2.0F;
    for (const BandCase& one : bands) {
        eq.gains[one.band] = gain;
        gain = -1.5F * gain;
    }
    Buffer sound = noise(2000, 0.5F);
    Buffer expected = sound;
    Biquad(Kind::highPass, 80.0, 0.707, 0.0).run(expected);
    for (const BandCase& one : bands) {
        Biquad(one.kind, one.frequency, one.q, static_cast<double>(eq.gains[one.band]))
            .run(expected);
    }
    Biquad(Kind::lowPass, 9000.0, 0.707, 0.0).run(expected);
    DSP::tone(sound, eq, 80.0, 9000.0);
    EXPECT_EQ(sound, expected);
}

TEST(Tone, cornersActJustInsideTheirLimits) {
    const Buffer before = noise(100, 1.0F);
    Buffer sound = before;
    DSP::tone(sound, Equalizer::flat(), 15.1, 20000.0);
    Buffer expected = before;
    Biquad(Kind::highPass, 15.1, 0.707, 0.0).run(expected);
    EXPECT_EQ(sound, expected);
    sound = before;
    DSP::tone(sound, Equalizer::flat(), 0.0, 18999.0);
    expected = before;
    Biquad(Kind::lowPass, 18999.0, 0.707, 0.0).run(expected);
    EXPECT_EQ(sound, expected);
}

TEST(Tone, cornersOutOfRangeAreMovedIntoIt) {
    Buffer sound = noise(100, 1.0F);
    Buffer expected = sound;
    Biquad(Kind::highPass, 23520.0, 0.707, 0.0).run(expected);
    Biquad(Kind::lowPass, 10.0, 0.707, 0.0).run(expected);
    DSP::tone(sound, Equalizer::flat(), 1e300, -1e300);
    EXPECT_EQ(sound, expected);
}

TEST(Tone, cornersThatAreNoNumberAddNothing) {
    const Buffer before = noise(100, 1.0F);
    Buffer sound = before;
    DSP::tone(sound, Equalizer::flat(), notANumber, notANumber);
    EXPECT_EQ(sound, before);
}

} // namespace
} // namespace vornic
