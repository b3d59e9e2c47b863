#include "packs/calibration/Calibration.h"

#include "packs/analysis/Distances.h"
#include "packs/calibration/FirstTable.h"
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
            double wanted = target.bands[window][band];
            if (window == 2) {
                // What is nearly as loud late as before is the recording's noise.
                wanted = std::min(wanted, target.bands[1][band] - 5);
            }
            level = std::clamp(towards(level, wanted, measured.bands[window][band], 0.6),
                               std::max(wanted - 15, -70.0), wanted + 20);
            if (target.count >= 5) {
                double& spread = table.spreads[window][band];
                spread = std::clamp(spread + 0.3 * (target.bandSpread[window][band] -
                                                    measured.bandSpread[window][band]),
                                    0.0, 9.0);
            }
        }
    }
}

// Hits that can be told apart must have decayed in between, unless they were measured to ring on.
double longestDecay(const StrokeTable& table, const ClassFeatures& target) {
    double longest = 40;
    for (std::size_t i = 1; i < table.events.size(); ++i) {
        const double gap = table.events[i].ms - table.events[i - 1].ms;
        if (gap < 5 && table.events[i].ms < 10 && table.events[i].share > 0.8) {
            longest = std::min(longest, 0.6 * gap);
        }
    }
    for (const std::optional<Statistic>& decay : target.decayMs) {
        longest = std::max(longest, decay ? decay->median : 0);
    }
    return longest;
}

// `decayMs` at `hz`, nearer to what its broad band should have.
double fittedDecay(double decayMs, double hz, const ClassFeatures& target,
                   const ClassFeatures& measured, double rate) {
    for (std::size_t broad = 0; broad < broadCount; ++broad) {
        const std::optional<Statistic>& wanted = target.decayMs[broad];
        const std::optional<Statistic>& is = measured.decayMs[broad];
        if (hz >= broadEdges[broad] && hz < broadEdges[broad + 1] && wanted && is) {
            return scaled(decayMs, wanted->median, is->median, rate);
        }
    }
    return decayMs;
}

void fitDecays(StrokeTable& table, const ClassFeatures& target, const ClassFeatures& measured) {
    const double longest = longestDecay(table, target);
    for (std::size_t band = 0; band < bandCount; ++band) {
        const double decay =
            fittedDecay(table.decayMs[band], bandCentres[band], target, measured, 0.4);
        table.decayMs[band] = std::clamp(decay, 0.4, longest);
        // Where too few strokes let the band's decay be measured, that of a mode within it is
        // known.
        if (!target.decayMs[broadOf(bandCentres[band])]) {
            for (const ModeStatistic& mode : target.modes) {
                if (mode.decayMs && std::abs(std::log2(mode.hz / bandCentres[band])) < 0.35) {
                    table.decayMs[band] = std::clamp(*mode.decayMs, 0.4, 40.0);
                }
            }
        }
    }
    for (ModeTable& mode : table.modes) {
        mode.decayMs = std::clamp(fittedDecay(mode.decayMs, mode.hz, target, measured, 0.2), 0.6,
                                  std::max(longest, 2.0));
        // Caps and foil damp high lines: none rings much longer than all of its band.
        const std::optional<Statistic>& all = target.decayMs[broadOf(mode.hz)];
        if (mode.hz > 3000 && all) {
            mode.decayMs = std::min(mode.decayMs, std::max(1.2 * all->median, 0.6));
        }
    }
}

// What is heard before the first contact.
void fitApproach(StrokeTable& table, const ClassFeatures& target, const ClassFeatures& measured) {
    for (std::size_t broad = 0; broad < broadCount; ++broad) {
        const double wanted = target.envelopeDb[broad][0];
        double& db = table.approach[broad];
        // The floor of the measurement says that there is less, not how much.
        db = wanted <= -45
                 ? std::min(db, -50.0)
                 : std::clamp(towards(db, wanted, measured.envelopeDb[broad][0], 0.7), -60.0, -5.0);
    }
}

// How far that is from what it should be: the mean over the bands, dB.
double approachOff(const ClassFeatures& target, const ClassFeatures& measured) {
    double sum = 0;
    for (std::size_t broad = 0; broad < broadCount; ++broad) {
        sum +=
            std::min(std::abs(target.envelopeDb[broad][0] - measured.envelopeDb[broad][0]), 15.0);
    }
    return sum / static_cast<double>(broadCount);
}

void fitEvents(StrokeTable& table, const ClassFeatures& target, const ClassFeatures& measured) {
    double share = 1;
    for (std::size_t i = 0; i < table.events.size() && i < target.events.size(); ++i) {
        EventTable& event = table.events[i];
        const EventStatistic& wanted = target.events[i];
        const EventStatistic is =
            i < measured.events.size() ? measured.events[i] : EventStatistic();
        if (i > 0) {
            event.share = std::clamp(event.share + 0.3 * (wanted.share - is.share),
                                     std::min(0.3 * wanted.share, share), share);
        }
        share = event.share;
        if (is.share <= 0) {
            event.db = std::min(event.db + 0.5, wanted.db.median + 8);
            continue;
        }
        if (i > 0) {
            event.ms = std::clamp(towards(event.ms, wanted.ms.median, is.ms.median, 0.3),
                                  wanted.ms.median * 0.8, wanted.ms.median * 1.1);
        }
        event.db = std::clamp(towards(event.db, wanted.db.median, is.db.median, 0.25),
                              wanted.db.median - 8, wanted.db.median + 8);
        if (target.count >= 5) {
            const double most = 1.3 * usualSpread(wanted.db);
            event.dbSpread =
                std::clamp(event.dbSpread + 0.15 * (usualSpread(wanted.db) - usualSpread(is.db)),
                           0.5, std::max(most, 0.5));
        }
        event.tilt = std::clamp(event.tilt + 0.6 * std::log2(wanted.centroidHz.median /
                                                             std::max(is.centroidHz.median, 50.0)),
                                -4.0, 4.0);
    }
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
            mode.part = std::clamp(mode.part + 0.2 * (wanted.present - present), 0.15, 0.85);
        }
    }
    const auto median = [](const ClassFeatures& features, const char* name) {
        const auto found = features.scalars.find(name);
        return found == features.scalars.end() ? 0 : found->second.median;
    };
    table.snap = std::clamp(
        table.snap + 0.03 * (median(target, "crest_db") - median(measured, "crest_db")), 0.0, 0.7);
    table.contactMs *= std::exp(
        0.05 * std::clamp(median(measured, "crest_db") - median(target, "crest_db"), -2.0, 2.0));
    table.contactMs = std::clamp(table.contactMs, 0.1, 3.0);
    table.tailTone = std::clamp(
        table.tailTone + 0.15 * (median(target, "tonality_db") - median(measured, "tonality_db")),
        0.0, 0.9);
    table.crowd =
        std::clamp(table.crowd * std::exp(0.25 * std::clamp(median(measured, "tonality_db") -
                                                                median(target, "tonality_db"),
                                                            -1.0, 1.0)),
                   0.25, 2.0);
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
        const double share = shareWithin(rows) - 0.2 * sum / static_cast<double>(rows.size()) -
                             0.01 * approachOff(target, measured);
        if (share > bestShare) {
            bestShare = share;
            best = *strokes;
        }
        fitBands(*strokes, target, measured);
        fitDecays(*strokes, target, measured);
        fitApproach(*strokes, target, measured);
        fitEvents(*strokes, target, measured);
        fitRest(*strokes, target, measured);
    }
    *strokes = best;
    const ClassFeatures measured = classFeaturesOf(makeStrokes(table, keyClass));
    return shareWithin(distances(measured, target));
}

} // namespace vornic::packs
