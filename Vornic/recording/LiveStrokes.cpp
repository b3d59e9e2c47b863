#include "Vornic/recording/LiveStrokes.h"

#include "VornicCore/strokes/Slicer.h"

#include <algorithm>
#include <cmath>

namespace vornic {

namespace {

/// From its onset, the longest that a slice can be, in seconds.
constexpr double wholeStroke = 0.22;

} // namespace

const char* label(StrokeVerdict verdict) {
    switch (verdict) {
    case StrokeVerdict::tooQuiet:
        return "Too quiet: type closer to the microphone.";
    case StrokeVerdict::clipped:
        return "Too loud: the microphone is overdriven. Move it away or turn it down.";
    case StrokeVerdict::tooClose:
        return "Too close together: wait a little after each key.";
    case StrokeVerdict::torn:
        return "Not whole: the computer was too busy. Press the key again.";
    case StrokeVerdict::good:
        break;
    }
    return "Good.";
}

StrokeVerdict judge(const Stroke& stroke) {
    if (stroke.clean) {
        return stroke.snrDb >= Slicer::leastSnrDb ? StrokeVerdict::good : StrokeVerdict::tooQuiet;
    }
    const bool isClipped = std::ranges::any_of(
        stroke.samples, [](float x) { return std::abs(x) >= Slicer::clippingPeak; });
    return isClipped ? StrokeVerdict::clipped : StrokeVerdict::tooClose;
}

LiveStrokes LiveStrokes::in(std::span<const float> heard, double rate, std::span<const Gap> gaps) {
    LiveStrokes live;
    const double end = static_cast<double>(heard.size()) / rate;
    for (const Stroke& stroke : Slicer::strokes(heard, rate)) {
        if (stroke.start + wholeStroke > end) {
            break;
        }
        live.last = isTorn(stroke, rate, gaps) ? StrokeVerdict::torn : judge(stroke);
        if (live.last == StrokeVerdict::good) {
            ++live.good;
        }
    }
    return live;
}

} // namespace vornic
