#pragma once

#include "VornicCore/strokes/Stroke.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Turns a recording of typing into single keystrokes. Pure computation.
/// Thread: any, as everything here.
namespace vornic::Slicer {

/// How many strokes are offered, and how far above the room's noise they must be, in decibels.
inline constexpr std::int64_t offeredStrokes = 16;
inline constexpr double leastSnrDb = 30.0;

/// A stroke that reaches this magnitude counts as clipped.
inline constexpr float clippingPeak = 0.99F;

/// The strokes in `samples` (mono), in the order of their onsets. Rumble below 60 Hz is taken out
/// first. A quiet hit within 160 ms of a louder one counts as its echo and only ends it. None for
/// 50 ms or less. Samples that are no finite number count as 0. `sampleRate` in Hz; one whose
/// twentieth is no 64-bit number stops the program, one that is not above 0 gives no strokes.
[[nodiscard]] std::vector<Stroke> strokes(std::span<const float> samples, double sampleRate);

/// At most `limit` of the clean strokes with a ratio of at least `minSnrDb`, the highest ratio
/// first, equal ones in their given order. A limit below 0 stops the program.
[[nodiscard]] std::vector<Stroke> best(std::span<const Stroke> strokes, std::int64_t limit,
                                       double minSnrDb);

/// The places in `strokes` of what `best` returns, in its order.
[[nodiscard]] std::vector<std::size_t> bestPlaces(std::span<const Stroke> strokes,
                                                  std::int64_t limit, double minSnrDb);

/// A kept slice made ready for the library: cut where it has fallen by 42 dB, then levelled to
/// -21 dB with a ceiling of -2 dB.
[[nodiscard]] std::vector<float> finish(std::vector<float> samples);

} // namespace vornic::Slicer
