#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace vornic {

/// The seconds of processor time that the program sox takes for a chain like ours on all strokes in
/// one file: corners and bands, a compander for attack and sustain, overdrive, speed by a quick
/// cubic, level. Of our stages it has no resonant body and no muting pad. Less the time of a run on
/// next to nothing. None if there is no sox.
std::optional<double> soxSeconds(std::span<const std::vector<float>> strokes);

} // namespace vornic
