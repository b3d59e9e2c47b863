#pragma once

#include "packs/analysis/StrokeFeatures.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// What the strokes of one key class have in common and how they differ.
namespace vornic::packs {

/// Over strokes.
struct Statistic {
    double median{};
    double deviation{};
    double tenth{};     // 10th percentile
    double ninetieth{}; // 90th percentile
};

/// Of no values, zeros.
Statistic statisticOf(std::vector<double> values);

/// The events with one place in their strokes: the 1st, the 2nd ...
struct EventStatistic {
    double share{}; // of strokes that have one
    Statistic ms, db, centroidHz;
};

/// A peak of the mean spectrum.
struct ModeStatistic {
    double hz{};
    double db{}; // re the strongest
    std::optional<double> decayMs;
    double present{}; // share of strokes with one of their eight strongest peaks within 120 cents
    std::optional<double> jitterCents;
};

struct ClassFeatures {
    std::size_t count{};
    double validFromHz{125};
    /// By name: centroid_hz, dur20_ms, dur30_ms, dur40_ms, attack_ms, crest_db, tonality_db,
    /// t50_ms, t90_ms, n_events, low_db, high_db, mid_db, late_db.
    std::map<std::string, Statistic> scalars;
    std::optional<Statistic> level; // dB; of a target, re the median regular press
    std::array<Bands, windowCount> bands{}, bandSpread{};
    std::array<std::optional<Statistic>, broadCount> decayMs;
    std::array<std::array<double, envelopeSteps>, broadCount> envelopeDb{};
    std::vector<ModeStatistic> modes;
    std::vector<EventStatistic> events;
    Statistic gapToStrongestMs;
};

/// Without the modes' decay, which takes as long as all the rest.
ClassFeatures classFeaturesOf(std::span<const std::vector<float>> strokes);

/// Adds it.
void measureModeDecays(ClassFeatures& features, std::span<const std::vector<float>> strokes);

} // namespace vornic::packs
