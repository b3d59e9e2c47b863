#pragma once

namespace vornic::DSP {

/// One resonance of a body.
struct Mode {
    /// Hz.
    double frequency = 0;
    /// The time constant of its exponential decay, in milliseconds.
    double decayMs = 0;
    double gainDb = 0;

    bool operator==(const Mode&) const = default;
};

} // namespace vornic::DSP
