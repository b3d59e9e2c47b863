#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace vornic::packs {

inline constexpr std::size_t broadCount = 6;
inline constexpr std::size_t envelopeSteps = 30;

/// Edges of the broad bands in Hz.
inline constexpr std::array<double, broadCount + 1> broadEdges{125,  400,  1000, 2000,
                                                               4000, 8000, 13000};

/// The broad band of `hz`; the lowest or the highest beyond them. Thread: any.
std::size_t broadOf(double hz);

/// How the broad bands of a stroke come and go.
struct BroadBands {
    /// Level of each band every 4 ms from 2 ms before the onset, dB re the loudest 2 ms of all
    /// bands together, -45 at least.
    std::array<std::array<double, envelopeSteps>, broadCount> envelopeDb;
    /// Amplitude time constant over the first 20 dB of each band, in ms; none where it could not be
    /// fitted.
    std::array<std::optional<double>, broadCount> decayMs;
};

BroadBands broadBandsOf(std::span<const float> samples, std::size_t onset);

/// Time constants of +-6 % about `hz`, over its first 20 dB.
std::optional<double> modeDecay(std::span<const float> samples, std::size_t onset, double hz);

} // namespace vornic::packs
