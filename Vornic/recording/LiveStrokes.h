#pragma once

#include "Vornic/recording/Gap.h"
#include "VornicCore/strokes/Stroke.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace vornic {

/// How a stroke has turned out, for the one who is just typing.
enum class StrokeVerdict : std::uint8_t { good, tooQuiet, clipped, tooClose, torn };

/// A short hint for the user: "Too quiet: type closer to the microphone."
const char* label(StrokeVerdict verdict);

/// What is wrong with a stroke, if anything: whether it would be offered, and why not.
StrokeVerdict judge(const Stroke& stroke);

/// What a recording that still goes on has brought so far. Thread: any, as everything here.
struct LiveStrokes {
    /// Strokes that would be offered, however many.
    std::size_t good = 0;
    /// How the last one turned out; absent before the first.
    std::optional<StrokeVerdict> last;

    /// Of `heard`, mono at `rate` Hz, with its `gaps`. A stroke counts once it is over. About 10 ms
    /// for 20 s at 48 kHz.
    static LiveStrokes in(std::span<const float> heard, double rate, std::span<const Gap> gaps);

    bool operator==(const LiveStrokes&) const = default;
};

} // namespace vornic
