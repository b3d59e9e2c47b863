#include "Vornic/recording/Gap.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vornic {

namespace {

/// Seconds before a stroke's onset that must be whole: the slicer hears the room in them.
constexpr double leadIn = 0.05;

} // namespace

bool isTorn(const Stroke& stroke, double rate, std::span<const Gap> gaps) {
    const double begin = stroke.start - leadIn;
    const double end = stroke.start + static_cast<double>(stroke.samples.size()) / rate;
    return std::ranges::any_of(
        gaps, [&](const Gap& gap) { return gap.start < end && gap.start + gap.length > begin; });
}

std::string noticeOf(std::span<const Gap> gaps) {
    if (gaps.empty()) {
        return {};
    }
    double seconds = 0.0;
    for (const Gap& gap : gaps) {
        seconds += gap.length;
    }
    const auto millis = static_cast<std::int64_t>(std::ceil(seconds * 1000.0));
    return "The recording has a gap: the computer was too busy to hear " + std::to_string(millis) +
           " ms of it. Keystrokes beside it are left out.";
}

} // namespace vornic
