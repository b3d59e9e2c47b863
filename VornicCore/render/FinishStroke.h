#pragma once

#include "VornicCore/board/ChainParams.h"
#include "VornicCore/render/LaneKernels.h"
#include "VornicCore/render/StrokeVariation.h"

#include <span>
#include <vector>

namespace vornic {

// The levels of every finished stroke, in dB.
inline constexpr double trimFloorDb = -60;    // relative to the peak
inline constexpr double strokeTargetDb = -21; // dBFS RMS of the strike
inline constexpr double strokeCeilingDb = -2; // dBFS

/// The pitch shift of a processed stroke in semitones. Thread: any, as everything here.
double finalPitch(const ChainParams& chain, const StrokeVariation& variation);

/// Cuts a processed stroke to 1 ms before its attack and to where it has died away, and brings it
/// to level; `levelDb` is added to that. Empty if anything in it is not finite.
void finishStroke(std::vector<float>& samples, double levelDb);

/// The same in fewer passes; uses `samples` up.
std::vector<float> finishedStroke(std::span<float> samples, double levelDb,
                                  const LaneKernels& kernels);

} // namespace vornic
