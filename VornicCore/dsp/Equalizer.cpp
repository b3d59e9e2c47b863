#include "VornicCore/dsp/Equalizer.h"

#include "VornicCore/realtime/Fatal.h"

#include <algorithm>

namespace vornic {

Equalizer::Equalizer(const std::map<Band, float>& given) {
    for (const Band band : allCases<Band>()) {
        const auto found = given.find(band);
        setGain(band, found == given.end() ? 0.0F : found->second);
    }
}

const Equalizer& Equalizer::flat() {
    static const Equalizer instance;
    return instance;
}

float Equalizer::gain(Band band) const {
    const auto found = gains.find(band);
    return found == gains.end() ? 0.0F : found->second;
}

void Equalizer::setGain(Band band, float gainDb) {
    gains[band] = std::clamp(gainDb, range.lowest, range.highest);
}

float Equalizer::headroom() const {
    float largest = gain(Band::bass);
    for (const Band band : allCases<Band>()) {
        largest = std::max(largest, gain(band));
    }
    return largest <= 0 ? -0.0F : -0.5F * largest;
}

float frequency(Equalizer::Band band) {
    switch (band) {
    case Equalizer::Band::bass:
        return 100;
    case Equalizer::Band::body:
        return 250;
    case Equalizer::Band::clack:
        return 1200;
    case Equalizer::Band::click:
        return 3500;
    case Equalizer::Band::air:
        return 9000;
    }
    fatal("an equaliser has five bands");
}

std::string_view hint(Equalizer::Band band) {
    switch (band) {
    case Equalizer::Band::bass:
        return "Low end under every key (100 Hz)";
    case Equalizer::Band::body:
        return "Wood-and-plastic warmth of the case (250 Hz)";
    case Equalizer::Band::clack:
        return "The keycap hitting the plate (1.2 kHz)";
    case Equalizer::Band::click:
        return "The sharp switch click (3.5 kHz)";
    case Equalizer::Band::air:
        return "Sparkle and hiss on top (9 kHz)";
    }
    fatal("an equaliser has five bands");
}

} // namespace vornic
