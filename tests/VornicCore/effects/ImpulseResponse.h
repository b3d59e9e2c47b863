#pragma once

#include "VornicCore/effects/Room.h"

#include <cstddef>
#include <vector>

namespace vornic {

/// A mono signal in double precision, 48 kHz.
using Signal = std::vector<double>;

struct StereoSignal {
    Signal left;
    Signal right;
};

/// The wet response of a room to a one-frame pulse of the given heights.
StereoSignal impulseResponse(Room room, float left, float right, std::size_t frames);

double energy(const Signal& signal);

/// The correlation of two signals of equal length within [from, to).
double correlation(const Signal& a, const Signal& b, std::size_t from, std::size_t to);

/// The signal passed twice through a one-octave band-pass around `hz`.
Signal octaveBand(Signal signal, double hz);

/// The reverberation time in seconds: Schroeder's backward integration, from -5 to -35 dB, doubled.
double reverberationTime(const Signal& response);

/// The part of the samples in [from, to) that exceed their standard deviation, against that part in
/// Gaussian noise (after Abel and Huang): near 1 once echoes have become dense.
double echoDensity(const Signal& response, std::size_t from, std::size_t to);

} // namespace vornic
