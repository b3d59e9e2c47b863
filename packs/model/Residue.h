#pragma once

#include "VornicCore/base/SplitMix64.h"

#include "packs/model/Resonators.h"

#include <vector>

/// The many weak resonances of a third of an octave, beside its few strong modes.
namespace vornic::packs {

/// Whether `crowd` times as many resonances as just overlap at `hz`, decaying with `decayMs`, are
/// more than make sense one by one. Thread: any.
bool isDense(double hz, double decayMs, double crowd);

/// Adds to `samples` noise of a third of an octave that follows `drive` and ends with it. Thread:
/// any.
void addNoise(const Drive& drive, double hz, double decayMs, double energy, SplitMix64& random,
              std::vector<double>& samples);

/// Adds to `samples` those resonances, one by one, at frequencies drawn from `random`. Thread: any.
void addCrowd(const Drive& drive, double hz, double decayMs, double energy, double crowd,
              SplitMix64& random, std::vector<double>& samples);

} // namespace vornic::packs
