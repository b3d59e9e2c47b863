#include "packs/analysis/ClassFeatures.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vornic::packs {

namespace {

using Strokes = std::vector<StrokeFeatures>;

template <typename Get>
std::vector<double> valuesOf(const Strokes& strokes, Get get) {
    std::vector<double> values(strokes.size());
    std::ranges::transform(strokes, values.begin(), get);
    return values;
}

template <typename Get>
Statistic statisticOver(const Strokes& strokes, Get get) {
    return statisticOf(valuesOf(strokes, get));
}

// Linear between the two values around it.
double percentile(const std::vector<double>& sorted, double part) {
    const double at = part * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(at);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], at - static_cast<double>(below));
}

void gatherScalars(const Strokes& strokes, ClassFeatures& result) {
    const auto add = [&](const char* name, auto get) {
        result.scalars[name] = statisticOver(strokes, get);
    };
    add("centroid_hz", &StrokeFeatures::centroidHz);
    add("dur20_ms", &StrokeFeatures::dur20Ms);
    add("dur30_ms", &StrokeFeatures::dur30Ms);
    add("dur40_ms", &StrokeFeatures::dur40Ms);
    add("attack_ms", &StrokeFeatures::attackMs);
    add("crest_db", &StrokeFeatures::crestDb);
    add("tonality_db", &StrokeFeatures::tonalityDb);
    add("t50_ms", &StrokeFeatures::t50Ms);
    add("t90_ms", &StrokeFeatures::t90Ms);
    add("low_db", &StrokeFeatures::lowDb);
    add("high_db", &StrokeFeatures::highDb);
    add("mid_db", &StrokeFeatures::midDb);
    add("late_db", &StrokeFeatures::lateDb);
    add("n_events",
        [](const StrokeFeatures& stroke) { return static_cast<double>(stroke.events.size()); });
    result.level = statisticOver(strokes, &StrokeFeatures::levelDb);
    result.gapToStrongestMs = statisticOver(strokes, &StrokeFeatures::gapToStrongestMs);
}

void gatherBands(const Strokes& strokes, ClassFeatures& result) {
    for (std::size_t window = 0; window < windowCount; ++window) {
        for (std::size_t band = 0; band < bandCount; ++band) {
            const Statistic over = statisticOver(strokes, [&](const StrokeFeatures& stroke) {
                return stroke.bandsDb[window][band];
            });
            result.bands[window][band] = over.median;
            result.bandSpread[window][band] = over.deviation;
        }
    }
    for (std::size_t band = 0; band < broadCount; ++band) {
        std::vector<double> decays;
        for (const StrokeFeatures& stroke : strokes) {
            if (const auto decay = stroke.broad.decayMs[band]) {
                decays.push_back(*decay);
            }
        }
        if (!decays.empty()) {
            result.decayMs[band] = statisticOf(decays);
        }
        for (std::size_t step = 0; step < envelopeSteps; ++step) {
            result.envelopeDb[band][step] =
                statisticOver(strokes, [&](const StrokeFeatures& stroke) {
                    return stroke.broad.envelopeDb[band][step];
                }).median;
        }
    }
}

void gatherEvents(const Strokes& strokes, ClassFeatures& result) {
    for (std::size_t index = 0;; ++index) {
        Strokes with;
        std::ranges::copy_if(strokes, std::back_inserter(with), [&](const StrokeFeatures& stroke) {
            return stroke.events.size() > index;
        });
        if (with.empty()) {
            return;
        }
        const auto over = [&](auto member) {
            return statisticOver(
                with, [&](const StrokeFeatures& stroke) { return stroke.events[index].*member; });
        };
        result.events.push_back(
            {.share = static_cast<double>(with.size()) / static_cast<double>(strokes.size()),
             .ms = over(&Event::ms),
             .db = over(&Event::db),
             .centroidHz = over(&Event::centroidHz)});
    }
}

ModeStatistic modeAt(double hz, const Strokes& strokes) {
    constexpr double near = 120;
    std::vector<double> cents;
    for (const StrokeFeatures& stroke : strokes) {
        std::optional<double> closest;
        for (const double peak : stroke.strongest) {
            const double distance = 1200 * std::log2(peak / hz);
            if (std::abs(distance) <= near &&
                (!closest || std::abs(distance) < std::abs(*closest))) {
                closest = distance;
            }
        }
        if (closest) {
            cents.push_back(*closest);
        }
    }
    ModeStatistic mode{.hz = hz,
                       .db = 0,
                       .decayMs = {},
                       .present =
                           static_cast<double>(cents.size()) / static_cast<double>(strokes.size()),
                       .jitterCents = {}};
    if (cents.size() > 2) {
        mode.jitterCents = statisticOf(cents).deviation;
    }
    return mode;
}

void gatherModes(const Strokes& strokes, ClassFeatures& result) {
    std::vector<double> mean(fineCount);
    for (const StrokeFeatures& stroke : strokes) {
        for (std::size_t i = 0; i < stroke.fine.size(); ++i) {
            mean[i] += stroke.fine[i];
        }
    }
    std::vector<std::size_t> peaks = finePeaks(mean);
    constexpr std::size_t most = 10;
    peaks.resize(std::min(peaks.size(), most));
    const double loudest = peaks.empty() ? 1 : mean[peaks.front()];
    std::ranges::sort(peaks);
    for (const std::size_t peak : peaks) {
        ModeStatistic mode = modeAt(fineFrequency(peak), strokes);
        mode.db = 10 * std::log10(mean[peak] / loudest);
        result.modes.push_back(mode);
    }
}

} // namespace

Statistic statisticOf(std::vector<double> values) {
    if (values.empty()) {
        return {};
    }
    std::ranges::sort(values);
    const double mean =
        std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
    double squares = 0;
    for (const double value : values) {
        squares += (value - mean) * (value - mean);
    }
    return {.median = percentile(values, 0.5),
            .deviation = std::sqrt(squares / static_cast<double>(values.size())),
            .tenth = percentile(values, 0.1),
            .ninetieth = percentile(values, 0.9)};
}

ClassFeatures classFeaturesOf(std::span<const std::vector<float>> recordings) {
    ClassFeatures result;
    Strokes strokes(recordings.size());
    std::ranges::transform(recordings, strokes.begin(),
                           [](const std::vector<float>& samples) { return featuresOf(samples); });
    result.count = strokes.size();
    if (strokes.empty()) {
        return result;
    }
    gatherScalars(strokes, result);
    gatherBands(strokes, result);
    gatherEvents(strokes, result);
    gatherModes(strokes, result);
    return result;
}

void measureModeDecays(ClassFeatures& features, std::span<const std::vector<float>> recordings) {
    for (ModeStatistic& mode : features.modes) {
        std::vector<double> decays;
        for (const auto& recording : recordings) {
            if (const auto decay = modeDecay(recording, featureOnset(recording), mode.hz)) {
                decays.push_back(*decay);
            }
        }
        if (!decays.empty()) {
            mode.decayMs = statisticOf(decays).median;
        }
    }
}

} // namespace vornic::packs
