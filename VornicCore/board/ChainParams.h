#pragma once

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/dsp/Equalizer.h"

#include <vector>

namespace vornic {

/// The settings of a processing chain. Thread: any.
struct ChainParams {
    Equalizer eq = Equalizer::flat();
    double highPassHz = 30;
    double lowPassHz = 20000;
    /// The change of the transient's level, in dB.
    double attackDb = 0;
    /// The change of the body's level, in dB.
    double sustainDb = 0;
    std::vector<DSP::Mode> bodyModes = {};
    /// The amount of the body's resonance.
    double bodyMix = 0;
    /// The amount by which the tail is damped.
    double damping = 0;
    /// Where the damping begins, in milliseconds.
    double dampingStartMs = 12;
    /// The amount of saturation.
    double drive = 0;
    /// Semitones.
    double pitch = 0;

    /// The chain that leaves a sound as it is; a fresh `ChainParams` is the same.
    static const ChainParams& neutral();

    bool operator==(const ChainParams&) const = default;
};

} // namespace vornic
