#include "Vornic/sound/DeskReflection.h"

#include <algorithm>
#include <cmath>

namespace vornic {

DeskReflection deskReflection(const StageSpec& stage) {
    constexpr double farthestLevel = 0.35;
    constexpr double matLevel = 0.5;
    constexpr float matDamp = 0.15f;
    const double distance = std::isnan(stage.distance) ? 0.0 : std::clamp(stage.distance, 0.0, 1.0);
    DeskReflection reflection;
    reflection.level =
        static_cast<float>(distance * farthestLevel * (stage.deskMat ? matLevel : 1.0));
    if (stage.deskMat) {
        reflection.damp = matDamp;
    }
    return reflection;
}

} // namespace vornic
