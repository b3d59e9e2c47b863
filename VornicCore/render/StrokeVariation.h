#pragma once

#include "VornicCore/board/ChainParams.h"
#include "VornicCore/sampler/Velocity.h"

#include <cstdint>

namespace vornic {

/// How one variation differs from the others of its velocity. Thread: any, as everything here.
struct StrokeVariation {
    double pitch = 0;   // semitones
    double levelDb = 0; // dB
    double clickDb = 0; // dB on the click band
    double airDb = 0;   // dB on the air band

    /// Drawn from a generator of its own, so that a variation is the same whatever else is
    /// rendered. `amount` is the board's; 0 makes all variations equal.
    static StrokeVariation draw(double amount, Velocity velocity, std::int64_t variant,
                                std::uint64_t seed);
};

/// The chain as struck with `velocity`, in this variation. The variation's pitch is not in it.
ChainParams struck(ChainParams chain, Velocity velocity, const StrokeVariation& variation);

/// What is added to the level of a finished stroke, in dB.
double finalLevelDb(Velocity velocity, const StrokeVariation& variation);

/// Adds to a band as its number type does, and keeps it in the equaliser's range.
void addGain(Equalizer& eq, Equalizer::Band band, double gainDb);

} // namespace vornic
