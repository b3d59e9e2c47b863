#pragma once

#include "VornicCore/effects/Room.h"
#include "VornicCore/realtime/RealTime.h"

#include <array>
#include <cstddef>

namespace vornic {

/// One early reflection as one ear hears it.
struct WallReflection {
    constexpr WallReflection(double ms, double level, bool fromOtherSide = false)
        : delayMs(ms), gain(level), crossed(fromOtherSide) {}

    /// Time after the direct sound.
    double delayMs;
    /// Level against the other reflections of the room (the whole is normalised).
    double gain;
    /// True for the wall on the far side: it throws the other channel's sound at this ear.
    bool crossed;
};

/// What one reverberant room sounds like. Measured from the responses to a pulse (RT60 from -5 to
/// -35 dB by Schroeder's backward integration, mean of both ears; the tests hold them to it):
///
/// | room     | mix | RT60 500 Hz | 2 kHz  | 8 kHz  | first reflection | early share of energy |
/// |----------|-----|-------------|--------|--------|------------------|-----------------------|
/// | `desk`   | 6 % | 0.24 s      | 0.23 s | 0.18 s | 2.4 ms           | 50 %                  |
/// | `studio` | 9 % | 0.42 s      | 0.39 s | 0.27 s | 4.9 ms           | 40 %                  |
/// | `wood`   | 8 % | 0.69 s      | 0.65 s | 0.40 s | 7.5 ms           | 25 %                  |
///
/// The times and gains of the early reflections follow from
/// mirror images of a keyboard on a desk, 0.7 m from the listener's head, in a box of the stated
/// size; the late part is a feedback delay network. Thread: any, as everything here.
struct RoomPreset {
    static constexpr std::size_t reflections = 8;
    static constexpr std::size_t lines = 16;
    static constexpr std::size_t diffusers = 3;
    /// Below this the decay time is `decay`.
    static constexpr double lowHz = 500.0;
    /// The decay time of the network here is `highDecay`.
    static constexpr double highHz = 8000.0;

    /// The part of the wet sound in the output, 0 to 1; the dry sound has the rest.
    double mix;
    /// Time in seconds in which the tail falls by 60 dB, at low and middle frequencies.
    double decay;
    /// The same at 8 kHz: surfaces and air swallow the highs first.
    double highDecay;
    /// Corner of the one-pole low-pass that everything wet passes once, in Hz.
    double lowPassHz;
    /// The early reflections at each ear.
    std::array<WallReflection, reflections> left;
    std::array<WallReflection, reflections> right;
    /// The part of the wet energy that lies in the early reflections, 0 to 1.
    double earlyShare;
    /// Delays of the network in frames. No two share a factor, so that echoes do not pile up.
    std::array<std::size_t, lines> delays;
    /// Delays of the all-pass sections ahead of the network, in frames, per channel.
    std::array<std::size_t, diffusers> leftDiffusers;
    std::array<std::size_t, diffusers> rightDiffusers;
    /// Measured energies of the two parts of the response to a one-frame pulse in both channels,
    /// mean of the two outputs, at gain 1. They make the wet response one of unit energy.
    double earlyEnergy;
    double lateEnergy;
};

/// The preset behind a room, for every room but `dry` (which gives that of `desk`).
[[nodiscard]] const RoomPreset& roomPreset(Room room) VORNIC_REALTIME;

} // namespace vornic
