#pragma once

#include "packs/analysis/BroadBands.h"
#include "packs/analysis/Events.h"
#include "packs/analysis/Spectrum.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace vornic::packs {

inline constexpr std::size_t windowCount = 3;

/// Early, mid and late: milliseconds from the onset.
inline constexpr std::array<double, windowCount + 1> windowEdgesMs{-3, 10, 40, 150};

/// A fine spectrum in steps of 1/24 octave from `fineStart` Hz.
inline constexpr double fineStart = 140;
inline constexpr std::size_t fineCount = 156;
double fineFrequency(std::size_t step);

/// The figures of one stroke, after a high-pass at 60 Hz.
struct StrokeFeatures {
    double levelDb{}; // energy over the three windows
    double centroidHz{};
    double dur20Ms{}, dur30Ms{}, dur40Ms{};
    double attackMs{};
    double crestDb{};
    double tonalityDb{};
    double t50Ms{}, t90Ms{};
    double lowDb{}, highDb{}, midDb{}, lateDb{};
    std::array<Bands, windowCount> bandsDb{}; // re the total over the windows, -55 at least
    BroadBands broad{};
    std::vector<Event> events;
    double gapToStrongestMs{};
    std::vector<double> fine;      // power of the ringing, re its sum, in steps of 1/24 octave
    std::vector<double> strongest; // Hz of its up to eight strongest peaks
};

/// Measures one stroke. Silence gives zeros.
StrokeFeatures featuresOf(std::span<const float> recording);

/// Indices of the local maxima of a fine spectrum, strongest first.
std::vector<std::size_t> finePeaks(std::span<const double> fine);

} // namespace vornic::packs
