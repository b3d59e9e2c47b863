#include "VornicCore/dsp/Tone.h"

#include "VornicCore/dsp/Biquad.h"

#include <array>
#include <cstddef>
#include <vector>

namespace vornic::DSP {

namespace {

constexpr double cornerQ = 0.707;
constexpr double peakQ = 1.1;

struct BandFilter {
    Equalizer::Band band;
    Biquad::Kind kind;
    double frequency;
    double q;
};

constexpr std::array bandFilters{
    BandFilter{.band = Equalizer::Band::bass,
               .kind = Biquad::Kind::lowShelf,
               .frequency = 100.0,
               .q = cornerQ},
    BandFilter{
        .band = Equalizer::Band::body, .kind = Biquad::Kind::peak, .frequency = 250.0, .q = peakQ},
    BandFilter{.band = Equalizer::Band::clack,
               .kind = Biquad::Kind::peak,
               .frequency = 1200.0,
               .q = peakQ},
    BandFilter{.band = Equalizer::Band::click,
               .kind = Biquad::Kind::peak,
               .frequency = 3500.0,
               .q = peakQ},
    BandFilter{.band = Equalizer::Band::air,
               .kind = Biquad::Kind::highShelf,
               .frequency = 9000.0,
               .q = cornerQ},
};

} // namespace

void tone(std::vector<float>& samples, const Equalizer& eq, double highPassHz, double lowPassHz) {
    std::vector<Biquad> cascade;
    if (highPassHz > 15.0) {
        cascade.emplace_back(Biquad::Kind::highPass, highPassHz, cornerQ, 0.0);
    }
    for (const BandFilter& filter : bandFilters) {
        // A band without an entry has gain 0.
        const auto gain = static_cast<double>(eq.gain(filter.band));
        if (gain != 0.0) {
            cascade.emplace_back(filter.kind, filter.frequency, filter.q, gain);
        }
    }
    if (lowPassHz < 19000.0) {
        cascade.emplace_back(Biquad::Kind::lowPass, lowPassHz, cornerQ, 0.0);
    }
    for (Biquad& section : cascade) {
        section.run(samples);
    }
}

} // namespace vornic::DSP
