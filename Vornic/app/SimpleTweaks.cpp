#include "Vornic/app/SimpleTweaks.h"

#include <algorithm>
#include <cmath>

namespace vornic {

namespace {

/// How much lower everything gets besides: bass alone only makes a sound heavier.
constexpr double sizeOfDeeper = 0.3;

double offset(double value) {
    return std::isnan(value) ? 0.0 : std::clamp(value, -1.0, 1.0);
}

SwitchType switchType(Feel feel) {
    switch (feel) {
    case Feel::linear:
        return SwitchType::linear;
    case Feel::tactile:
        return SwitchType::tactile;
    case Feel::clicky:
        return SwitchType::clicky;
    }
    return SwitchType::linear;
}

/// How much snappier a bump or a click makes a press. The parts alone, which only colour the tone,
/// leave the three too close to be told by ear.
double snap(SwitchType type) {
    switch (type) {
    case SwitchType::tactile:
        return 0.6;
    case SwitchType::clicky:
        return 0.4;
    default:
        return 0;
    }
}

void setFeel(SoundSpec& sound, Feel feel) {
    const SwitchType wanted = switchType(feel);
    sound.character.snap += snap(wanted) - snap(sound.switchParts.type);
    sound.switchParts.type = wanted;
}

} // namespace

Board tweaked(Board board, const SimpleTweaks& tweaks) {
    board.character.depth += offset(tweaks.deeper);
    board.character.size += sizeOfDeeper * offset(tweaks.deeper);
    board.character.snap += offset(tweaks.crisper);
    if (tweaks.feel) {
        for (SoundSpec& sound : board.sounds) {
            setFeel(sound, *tweaks.feel);
        }
    }
    return board;
}

} // namespace vornic
