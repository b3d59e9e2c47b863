#pragma once

#include "VornicCore/dsp/Equalizer.h"

#include <map>
#include <optional>

namespace vornic {

/// What a choice of parts changes in a processing chain. Thread: any.
struct PartEffect {
    /// Offsets in dB; a missing band counts as 0.
    std::map<Equalizer::Band, double> eq = {};
    /// dB, added to the gain of the attack.
    double attackDb = 0;
    /// dB, added to the gain of the sustain.
    double sustainDb = 0;
    /// Added to the amount of damping.
    double damping = 0;
    /// Added to the amount of drive.
    double drive = 0;
    /// Semitones, added to the pitch.
    double pitch = 0;
    /// Resonance, added to the mix of the body's modes.
    double ring = 0;
    /// The level in dB of the recorded switch click, if that is to be mixed in.
    std::optional<double> clickLayerDb = std::nullopt;
    /// The level in dB of the recorded spring ping, if that is to be mixed in.
    std::optional<double> springLayerDb = std::nullopt;

    /// Changes nothing.
    static const PartEffect& none();

    /// Sums band by band and field by field; of two levels of a layer the higher counts.
    PartEffect operator+(const PartEffect& other) const;

    /// What is still to be changed for these parts in a recording that was made with `recorded`:
    /// differences band by band and field by field. A layer that the recording has already, at no
    /// more than 3 dB below the wanted level, is not mixed in a second time.
    PartEffect operator-(const PartEffect& recorded) const;

    bool operator==(const PartEffect&) const = default;
};

} // namespace vornic
