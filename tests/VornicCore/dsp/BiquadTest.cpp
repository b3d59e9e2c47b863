#include "VornicCore/dsp/Biquad.h"

#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>

namespace vornic {
namespace {

using DSP::Biquad;
using Kind = Biquad::Kind;

constexpr std::array kinds{Kind::lowShelf, Kind::highShelf, Kind::peak,
                           Kind::highPass, Kind::lowPass,   Kind::bandPass};

bool sameCoefficients(const Biquad& a, const Biquad& b) {
    return a == b;
}

// The analogue prototypes of the cookbook, H(s) with s in units of the corner's frequency, bent to
// the digital frequency axis by the bilinear transform: an independent way to the same response.
std::complex<double> prototype(Kind kind, double hz, double corner, double q, double gainDb) {
    const auto bent = [](double f) { return std::tan(std::numbers::pi * f / 48000.0); };
    const std::complex<double> s(0.0, bent(hz) / bent(corner));
    const double A = std::pow(10.0, gainDb / 40.0);
    const double root = std::sqrt(A) / q;
    switch (kind) {
    case Kind::lowShelf:
        return A * (s * s + root * s + A) / (A * s * s + root * s + 1.0);
    case Kind::highShelf:
        return A * (A * s * s + root * s + 1.0) / (s * s + root * s + A);
    case Kind::peak:
        return (s * s + s * (A / q) + 1.0) / (s * s + s / (A * q) + 1.0);
    case Kind::highPass:
        return s * s / (s * s + s / q + 1.0);
    case Kind::lowPass:
        return 1.0 / (s * s + s / q + 1.0);
    case Kind::bandPass:
        return (s / q) / (s * s + s / q + 1.0);
    }
    return 0.0;
}

TEST(Biquad, responseIsThatOfItsKind) {
    struct Setting {
        double corner;
        double q;
        double gainDb;
    };
    for (const Kind kind : kinds) {
        for (const Setting& setting :
             {Setting{100.0, 0.707, 6.0}, Setting{1200.0, 1.1, -9.0}, Setting{9000.0, 4.0, 12.0}}) {
            Biquad section(kind, setting.corner, setting.q, setting.gainDb);
            Buffer response(48000);
            response[0] = 1.0F;
            section.run(response);
            for (const double hz : {20.0, 90.0, 250.0, 1200.0, 5000.0, 9000.0, 15000.0, 21000.0}) {
                const std::complex<double> expected =
                    prototype(kind, hz, setting.corner, setting.q, setting.gainDb);
                const std::complex<double> measured = fourier(response, hz);
                EXPECT_NEAR(std::abs(measured - expected), 0.0, 2e-5 + 1e-5 * std::abs(expected))
                    << "kind " << static_cast<int>(kind) << ", corner " << setting.corner
                    << " Hz, at " << hz << " Hz";
            }
        }
    }
}

TEST(Biquad, startsAtRestAndDividedByA0) {
    const Biquad section(Kind::lowPass, 12000.0, 0.5, 0.0);
    // At a quarter of the rate c = 0 and s = 1: alpha = 1, a0 = 2.
    EXPECT_NEAR(section.b0, 0.25, 1e-12);
    EXPECT_NEAR(section.b1, 0.5, 1e-12);
    EXPECT_NEAR(section.b2, 0.25, 1e-12);
    EXPECT_NEAR(section.a1, 0.0, 1e-12);
    EXPECT_NEAR(section.a2, 0.0, 1e-12);
    EXPECT_EQ(section.z1, 0.0);
    EXPECT_EQ(section.z2, 0.0);
}

TEST(Biquad, aCornerBelowTenHertzIsBuiltAtTen) {
    EXPECT_TRUE(sameCoefficients(Biquad(Kind::highPass, 5.0, 0.707, 0.0),
                                 Biquad(Kind::highPass, 10.0, 0.707, 0.0)));
    EXPECT_FALSE(sameCoefficients(Biquad(Kind::highPass, 11.0, 0.707, 0.0),
                                  Biquad(Kind::highPass, 10.0, 0.707, 0.0)));
}

TEST(Biquad, aCornerTooHighIsBuiltJustBelowHalfTheRate) {
    EXPECT_TRUE(sameCoefficients(Biquad(Kind::lowPass, 30000.0, 0.707, 0.0),
                                 Biquad(Kind::lowPass, 23520.0, 0.707, 0.0)));
    EXPECT_FALSE(sameCoefficients(Biquad(Kind::lowPass, 23519.0, 0.707, 0.0),
                                  Biquad(Kind::lowPass, 23520.0, 0.707, 0.0)));
}

TEST(Biquad, theLowerLimitComesFirst) {
    // At a rate of 10 Hz the upper limit, 4.9 Hz, has the last word.
    EXPECT_TRUE(sameCoefficients(Biquad(Kind::lowPass, 1.0, 0.707, 0.0, 10.0),
                                 Biquad(Kind::lowPass, 4.9, 0.707, 0.0, 10.0)));
    const double w0 = 2.0 * std::numbers::pi * 0.49;
    EXPECT_NEAR(Biquad(Kind::lowPass, 1.0, 0.707, 0.0, 10.0).b0,
                (1.0 - std::cos(w0)) / 2.0 / (1.0 + std::sin(w0) / 1.414), 1e-12);
}

TEST(Biquad, gainCountsForShelvesAndPeakOnly) {
    for (const Kind kind : {Kind::highPass, Kind::lowPass, Kind::bandPass}) {
        EXPECT_TRUE(
            sameCoefficients(Biquad(kind, 500.0, 1.0, 12.0), Biquad(kind, 500.0, 1.0, 0.0)));
    }
    for (const Kind kind : {Kind::lowShelf, Kind::highShelf, Kind::peak}) {
        EXPECT_FALSE(
            sameCoefficients(Biquad(kind, 500.0, 1.0, 12.0), Biquad(kind, 500.0, 1.0, 0.0)));
    }
}

TEST(Biquad, processIsTransposedDirectFormTwo) {
    Biquad section(Kind::peak, 1000.0, 1.1, 6.0);
    const Biquad start = section;
    double x1 = 0.0;
    double x2 = 0.0;
    double y1 = 0.0;
    double y2 = 0.0;
    for (const float sample : noise(500, 1.0F)) {
        // Direct form I computes the same from past inputs and outputs.
        const auto x = static_cast<double>(sample);
        const double expected =
            start.b0 * x + start.b1 * x1 + start.b2 * x2 - start.a1 * y1 - start.a2 * y2;
        const double y = section.process(x);
        ASSERT_NEAR(y, expected, 1e-12);
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = expected;
    }
    EXPECT_NE(section.z1, 0.0);
}

TEST(Biquad, runKeepsItsStateFromCallToCall) {
    Biquad whole(Kind::lowShelf, 100.0, 0.707, 5.0);
    Biquad parts = whole;
    Buffer all = noise(1000, 1.0F);
    Buffer first(all.begin(), all.begin() + 300);
    Buffer second(all.begin() + 300, all.end());
    whole.run(all);
    parts.run(first);
    parts.run(second);
    first.insert(first.end(), second.begin(), second.end());
    EXPECT_EQ(first, all);
    EXPECT_EQ(whole, parts);
}

TEST(Biquad, hostileParametersGiveAFiniteStableSection) {
    for (const Kind kind : kinds) {
        for (const double value : hostileValues) {
            for (Biquad section :
                 {Biquad(kind, value, 0.707, 3.0), Biquad(kind, 500.0, value, 3.0),
                  Biquad(kind, 500.0, 0.707, value), Biquad(kind, value, value, value, value)}) {
                Buffer sound = noise(2000, 1.0F);
                section.run(sound);
                EXPECT_TRUE(std::isfinite(section.b0) && std::isfinite(section.a2)) << value;
                EXPECT_TRUE(std::ranges::none_of(sound, [](float x) { return std::isnan(x); }));
            }
        }
    }
}

} // namespace
} // namespace vornic
