#include "VornicCore/dsp/Tone.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>

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

std::optional<Biquad> highPassSection(double highPassHz) noexcept {
    if (highPassHz > 15.0) {
        return Biquad(Biquad::Kind::highPass, highPassHz, cornerQ, 0.0);
    }
    return std::nullopt;
}

std::optional<Biquad> bandSection(Equalizer::Band band, float gainDb) noexcept {
    const auto* const filter = std::ranges::find(bandFilters, band, &BandFilter::band);
    if (filter == bandFilters.end() || gainDb == 0.0F) {
        return std::nullopt;
    }
    return Biquad(filter->kind, filter->frequency, filter->q, static_cast<double>(gainDb));
}

std::optional<Biquad> lowPassSection(double lowPassHz) noexcept {
    if (lowPassHz < 19000.0) {
        return Biquad(Biquad::Kind::lowPass, lowPassHz, cornerQ, 0.0);
    }
    return std::nullopt;
}

namespace {

/// The sections of the cascade, in its order. A band without an entry has gain 0.
template <typename Pass>
void eachSection(const Equalizer& eq, double highPassHz, double lowPassHz, const Pass& pass) {
    const auto give = [&](std::optional<Biquad> section) {
        if (section) {
            pass(*section);
        }
    };
    give(highPassSection(highPassHz));
    for (const BandFilter& filter : bandFilters) {
        give(bandSection(filter.band, eq.gain(filter.band)));
    }
    give(lowPassSection(lowPassHz));
}

} // namespace

ToneResponse::ToneResponse(const Equalizer& eq, double highPassHz, double lowPassHz) {
    eachSection(eq, highPassHz, lowPassHz,
                [this](const Biquad& section) { sections_.push_back(section); });
}

double ToneResponse::gainDb(double frequency) const noexcept {
    double gain = 1.0;
    for (const Biquad& section : sections_) {
        gain *= std::abs(section.response(frequency));
    }
    return 20.0 * std::log10(gain);
}

void tone(std::vector<float>& samples, const Equalizer& eq, double highPassHz, double lowPassHz) {
    eachSection(eq, highPassHz, lowPassHz, [&](Biquad& section) { section.run(samples); });
}

} // namespace vornic::DSP
