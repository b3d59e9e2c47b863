#include "VornicCore/dsp/EQPreset.h"

#include <algorithm>

namespace vornic {

namespace {

Equalizer equalizer(float bass, float body, float clack, float click, float air) {
    return Equalizer({
        {Equalizer::Band::bass, bass},
        {Equalizer::Band::body, body},
        {Equalizer::Band::clack, clack},
        {Equalizer::Band::click, click},
        {Equalizer::Band::air, air},
    });
}

template <typename Found>
const EQPreset* orNull(Found found) {
    return found == EQPreset::all().end() ? nullptr : &*found;
}

} // namespace

const std::array<EQPreset, 8>& EQPreset::all() {
    static const std::array<EQPreset, 8> presets{{
        {"natural", "Natural", "The recording as it is", equalizer(0, 0, 0, 0, 0)},
        {"warm", "Warm", "More bass and body, softer top", equalizer(5, 2, 0, -2, -3)},
        {"thocky", "Thocky", "Deep and rounded, like a heavy custom board",
         equalizer(7, 3, -2, -5, -6)},
        {"creamy", "Creamy", "Smooth and muted, nothing sharp", equalizer(3, 4, 1, -6, -8)},
        {"crisp", "Crisp", "Clean and detailed", equalizer(1, -1, 0, 3, 4)},
        {"clacky", "Clacky", "Loud plastic clack up front", equalizer(2, -2, 5, 2, 0)},
        {"snappy", "Snappy", "Thin and fast, all click", equalizer(-3, -3, 2, 5, 3)},
        {"muffled", "Muffled", "Like typing in the next room", equalizer(2, 3, -4, -9, -12)},
    }};
    return presets;
}

const EQPreset* EQPreset::named(std::string_view id) {
    return orNull(std::ranges::find(all(), id, &EQPreset::id));
}

const EQPreset* EQPreset::matching(const Equalizer& eq) {
    return orNull(std::ranges::find(all(), eq, &EQPreset::eq));
}

} // namespace vornic
