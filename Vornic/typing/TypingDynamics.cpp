#include "Vornic/typing/TypingDynamics.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vornic {

namespace {

constexpr double pauseSeconds = 1.2;
constexpr double slowPaceSeconds = 0.35;
constexpr double fastPaceSeconds = 0.08;
constexpr double gainSpreadDb = 1.5;
constexpr double rateSpread = 0.015;

} // namespace

double TypingDynamics::speed() const {
    return std::clamp((slowPaceSeconds - pace) / (slowPaceSeconds - fastPaceSeconds), 0.0, 1.0);
}

StrokeShape TypingDynamics::down(double at, SplitMix64& generator) {
    const double gap = lastDown ? at - *lastDown : std::numeric_limits<double>::infinity();
    lastDown = at;
    const bool afterPause = gap >= pauseSeconds;
    if (!afterPause) {
        pace = 0.7 * pace + 0.3 * gap;
    }
    const StrokeShape stroke = shape(speed(), afterPause, generator);
    last = {stroke.gain, stroke.rate, 0.0f};
    return stroke;
}

StrokeShape TypingDynamics::shape(double speed, bool afterPause, SplitMix64& generator) {
    double gain = 1.0 - 0.32 * speed;
    double rate = 0.975 + 0.05 * speed;
    if (afterPause) {
        gain = std::min(gain + 0.15, 1.05);
        rate -= 0.01;
    }
    gain *= std::pow(10.0, generator.uniform(-gainSpreadDb, gainSpreadDb) / 20.0);
    rate *= 1.0 + generator.uniform(-rateSpread, rateSpread);
    return {static_cast<float>(gain), static_cast<float>(rate), 0.0f};
}

} // namespace vornic
