// What is drawn as the tone control's curve is what its filters do to a sound.

#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/dsp/EQPreset.h"
#include "VornicCore/dsp/Tone.h"
#include "tests/VornicCore/dsp/Signals.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace vornic {
namespace {

using DSP::Biquad;
using Kind = Biquad::Kind;

constexpr std::array frequencies{20.0, 100.0, 250.0, 700.0, 1200.0, 3500.0, 9000.0, 20000.0};

Buffer impulse() {
    Buffer result(48000, 0.0F);
    result.front() = 1.0F;
    return result;
}

TEST(Response, ofASectionIsTheSpectrumOfItsImpulseResponse) {
    for (const Kind kind : {Kind::lowShelf, Kind::highShelf, Kind::peak, Kind::highPass,
                            Kind::lowPass, Kind::bandPass}) {
        const Biquad section(kind, 900.0, 1.1, 7.0);
        Biquad measured = section;
        Buffer answer = impulse();
        measured.run(answer);
        for (const double frequency : frequencies) {
            const std::complex<double> wanted = fourier(answer, frequency);
            EXPECT_LT(std::abs(section.response(frequency) - wanted), 1e-5)
                << static_cast<int>(kind) << " at " << frequency;
        }
    }
}

TEST(Response, countsTheFrequencyAgainstTheRate) {
    const Biquad slow(Kind::peak, 1000.0, 1.1, 6.0, 24000.0);
    EXPECT_NEAR(std::abs(slow.response(1000.0, 24000.0)), std::pow(10.0, 6.0 / 20.0), 1e-12);
}

TEST(Response, ofTheWholeToneControlIsMeasuredToo) {
    for (const EQPreset& preset : EQPreset::all()) {
        Buffer answer = impulse();
        DSP::tone(answer, preset.eq, 60.0, 12000.0);
        for (const double frequency : frequencies) {
            const double measured = 20.0 * std::log10(std::abs(fourier(answer, frequency)));
            EXPECT_NEAR(DSP::ToneResponse(preset.eq, 60.0, 12000.0).gainDb(frequency), measured,
                        0.01)
                << preset.id << " at " << frequency;
        }
    }
}

TEST(Response, ofNothingToDoIsFlat) {
    for (const double frequency : frequencies) {
        EXPECT_EQ(DSP::ToneResponse(Equalizer::flat(), 15.0, 19000.0).gainDb(frequency), 0.0);
    }
}

} // namespace
} // namespace vornic
