#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace vornic::packs {

/// A burst within a stroke.
struct Event {
    double ms;         // after the first
    double db;         // re the loudest
    double centroidHz; // of its first 3 ms
};

/// Mean squares over windows of `windowMs`, one every `stepMs`; the first begins at sample 0.
std::vector<double> levelSteps(std::span<const float> samples, double windowMs, double stepMs);

/// First sample about which the 1 ms level is within 20 dB of the loudest 1 ms.
std::size_t featureOnset(std::span<const float> samples);

/// Peaks of the 1 ms level with at least 6 dB of prominence, 2.5 ms or more apart, within 26 dB of
/// the loudest, of which none comes more than 6 ms before `onset`.
std::vector<Event> eventsOf(std::span<const float> samples, std::size_t onset);

} // namespace vornic::packs
