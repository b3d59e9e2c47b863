#include "packs/calibration/Calibration.h"

#include "packs/analysis/Distances.h"
#include "packs/model/StrokeModel.h"

#include <algorithm>
#include <cmath>

namespace vornic::packs {

namespace {

// Towards a target that is no less than the analysis can see.
double towards(double value, double target, double measured, double rate) {
    return value + rate * std::clamp(target - measured, -6.0, 6.0);
}

double scaled(double value, double target, double measured, double rate) {
    if (target <= 0 || measured <= 0) {
        return value;
    }
    return value * std::pow(std::clamp(target / measured, 0.5, 2.0), rate);
}

void fitBands(StrokeTable& table, const ClassFeatures& target, const ClassFeatures& measured) {
    for (std::size_t window = 0; window < windowCount; ++window) {
        // From the top, so that bands the recording does not show follow the lowest it does.
        for (std::size_t band = bandCount; band-- > 0;) {
            double& level = table.levels[window][band];
            if (bandCentres[band] < target.validFromHz) {
                level = table.levels[window][band + 1] - 2;
                table.spreads[window][band] = table.spreads[window][band + 1];
                continue;
            }
            level = std::max(
                towards(level, target.bands[window][band], measured.bands[window][band], 0.6),
                -75.0);
            if (target.count >= 5) {
                double& spread = table.spreads[window][band];
                spread = std::clamp(spread + 0.3 * (target.bandSpread[window][band] -
                                                    measured.bandSpread[window][band]),
                                    0.0, 9.0);
            }
        }
    }
}

void fitDecays(StrokeTable& table, const ClassFeatures& target, const ClassFeatures& measured) {
    for (std::size_t band = 0; band < bandCount; ++band) {
        for (std::size_t broad = 0; broad < broadCount; ++broad) {
            if (bandCentres[band] >= broadEdges[broad] &&
                bandCentres[band] < broadEdges[broad + 1] && target.decayMs[broad] &&
                measured.decayMs[broad]) {
                table.decayMs[band] =
                    std::clamp(scaled(table.decayMs[band], target.decayMs[broad]->median,
                                      measured.decayMs[broad]->median, 0.4),
                               0.4, 40.0);
            }
        }
    }
    for (ModeTable& mode : table.modes) {
        for (std::size_t broad = 0; broad < broadCount; ++broad) {
            if (mode.hz >= broadEdges[broad] && mode.hz < broadEdges[broad + 1] &&
                target.decayMs[broad] && measured.decayMs[broad]) {
                mode.decayMs = std::clamp(scaled(mode.decayMs, target.decayMs[broad]->median,
                                                 measured.decayMs[broad]->median, 0.2),
                                          0.6, 40.0);
            }
        }
    }
}

void fitEvents(StrokeTable& table, const ClassFeatures& target, const ClassFeatures& measured) {
    double share = 1;
    for (std::size_t i = 0; i < table.events.size() && i < target.events.size(); ++i) {
        EventTable& event = table.events[i];
        const EventStatistic& wanted = target.events[i];
        const EventStatistic is =
            i < measured.events.size() ? measured.events[i] : EventStatistic();
        event.share = i == 0 ? 1
                             : std::clamp(event.share + 0.3 * (wanted.share - is.share), 0.0,
                                          std::min(share, 1.0));
        share = event.share;
        if (is.share <= 0) {
            event.db = std::min(event.db + 0.5, 6.0);
            continue;
        }
        if (i > 0) {
            event.ms = std::max(towards(event.ms, wanted.ms.median, is.ms.median, 0.4),
                                2.8 * static_cast<double>(i));
            if (target.count >= 5) {
                event.msSpread = std::clamp(
                    event.msSpread + 0.15 * (wanted.ms.deviation - is.ms.deviation), 0.5, 14.0);
            }
        }
        event.db = std::clamp(towards(event.db, wanted.db.median, is.db.median, 0.25), -32.0, 6.0);
        if (target.count >= 5) {
            event.dbSpread = std::clamp(
                event.dbSpread + 0.15 * (wanted.db.deviation - is.db.deviation), 1.0, 10.0);
        }
        event.tilt = std::clamp(event.tilt + 0.8 * std::log2(wanted.centroidHz.median /
                                                             std::max(is.centroidHz.median, 50.0)),
                                -8.0, 8.0);
    }
}

// The slope of all bands together where only what rings on is left, as a time constant.
double tailDecay(const ClassFeatures& features) {
    constexpr std::size_t from = 12; // 46 ms after the onset
    std::vector<double> level;
    for (std::size_t step = from; step < envelopeSteps; ++step) {
        double sum = 0;
        for (const auto& band : features.envelopeDb) {
            sum += band[step] > -44.9 ? std::pow(10.0, band[step] / 10) : 0;
        }
        if (sum < std::pow(10.0, -4.3)) {
            break;
        }
        level.push_back(10 * std::log10(sum));
    }
    if (level.size() < 4 || level.front() - level.back() < 1) {
        return 0;
    }
    const double fall = (level.front() - level.back()) / static_cast<double>(level.size() - 1);
    return 20 / std::log(10.0) * 4 / fall;
}

void fitRest(StrokeTable& table, const ClassFeatures& target, const ClassFeatures& measured) {
    for (ModeTable& mode : table.modes) {
        for (const ModeStatistic& wanted : target.modes) {
            if (std::abs(std::log2(mode.hz / wanted.hz)) > 0.05) {
                continue;
            }
            double present = 0;
            for (const ModeStatistic& is : measured.modes) {
                if (std::abs(std::log2(is.hz / wanted.hz)) < 0.06) {
                    present = std::max(present, is.present);
                }
            }
            mode.part = std::clamp(mode.part + 0.1 * (wanted.present - present), 0.1, 0.85);
        }
    }
    const auto median = [](const ClassFeatures& features, const char* name) {
        const auto found = features.scalars.find(name);
        return found == features.scalars.end() ? 0 : found->second.median;
    };
    table.contactMs *= std::exp(
        0.05 * std::clamp(median(measured, "crest_db") - median(target, "crest_db"), -2.0, 2.0));
    table.contactMs = std::clamp(table.contactMs, 0.1, 3.0);
    table.crowd =
        std::clamp(table.crowd * std::exp(0.25 * std::clamp(median(measured, "tonality_db") -
                                                                median(target, "tonality_db"),
                                                            -1.0, 1.0)),
                   0.25, 2.0);
    table.tailMs =
        std::clamp(scaled(table.tailMs, tailDecay(target), tailDecay(measured), 0.3), 10.0, 45.0);
}

} // namespace

double calibrate(PackTable& table, const std::string& keyClass, const ClassFeatures& target,
                 int rounds) {
    StrokeTable* const strokes = table.find(keyClass);
    StrokeTable best = *strokes;
    double bestShare = -1;
    for (int round = 0; round < rounds; ++round) {
        const ClassFeatures measured = classFeaturesOf(makeStrokes(table, keyClass));
        const std::vector<Distance> rows = distances(measured, target);
        double sum = 0;
        for (const Distance& row : rows) {
            sum += std::min(std::abs(row.deviations), 3.0);
        }
        // Ties in what is within one are broken by how near all is.
        const double share = shareWithin(rows) - 0.2 * sum / static_cast<double>(rows.size());
        if (share > bestShare) {
            bestShare = share;
            best = *strokes;
        }
        fitBands(*strokes, target, measured);
        fitDecays(*strokes, target, measured);
        fitEvents(*strokes, target, measured);
        fitRest(*strokes, target, measured);
    }
    *strokes = best;
    const ClassFeatures measured = classFeaturesOf(makeStrokes(table, keyClass));
    return shareWithin(distances(measured, target));
}

} // namespace vornic::packs
