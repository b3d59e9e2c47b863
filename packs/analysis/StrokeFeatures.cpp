#include "packs/analysis/StrokeFeatures.h"

#include "packs/recorded/StrokeShape.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace vornic::packs {

namespace {

constexpr double floorDb = -55;
constexpr double longestMs = 160;

double decibelsOfPower(double power) {
    return 10 * std::log10(std::max(power, 1e-20));
}

double sumOf(std::span<const double> values) {
    return std::accumulate(values.begin(), values.end(), 0.0);
}

void measureBands(std::span<const float> samples, std::size_t onset, StrokeFeatures& features) {
    std::array<Bands, windowCount> powers{};
    for (std::size_t window = 0; window < windowCount; ++window) {
        powers[window] = bandPowers(powerSpectrum(samples, onset, windowEdgesMs[window],
                                                  windowEdgesMs[window + 1], 1, 16384));
    }
    Bands all{};
    for (const Bands& window : powers) {
        std::ranges::transform(all, window, all.begin(), std::plus());
    }
    const double total = sumOf(all);
    if (total <= 0) {
        return;
    }
    features.levelDb = decibelsOfPower(total);
    features.centroidHz =
        std::inner_product(all.begin(), all.end(), bandCentres.begin(), 0.0) / total;
    double low = 0;
    double high = 0;
    for (std::size_t band = 0; band < bandCount; ++band) {
        (bandCentres[band] < 400 ? low : high) +=
            bandCentres[band] < 400 || bandCentres[band] > 4200 ? all[band] : 0;
        for (std::size_t window = 0; window < windowCount; ++window) {
            features.bandsDb[window][band] =
                std::max(decibelsOfPower(powers[window][band] / total), floorDb);
        }
    }
    features.lowDb = std::max(decibelsOfPower(low / total), -60.0);
    features.highDb = std::max(decibelsOfPower(high / total), -60.0);
    features.midDb = std::max(decibelsOfPower(sumOf(powers[1]) / total), -60.0);
    features.lateDb = std::max(decibelsOfPower(sumOf(powers[2]) / total), -60.0);
}

double durationWithin(const std::vector<double>& level, double range, double frameMs) {
    const double least = *std::ranges::max_element(level) * std::pow(10.0, -range / 10);
    const auto last =
        std::find_if(level.rbegin(), level.rend(), [&](double value) { return value >= least; });
    return std::min(static_cast<double>(level.rend() - last) * frameMs, longestMs);
}

void measureTimes(std::span<const float> samples, std::size_t onset, StrokeFeatures& features) {
    const auto from = samples.subspan(onset);
    const auto counted =
        from.first(std::min(from.size(), static_cast<std::size_t>(longestMs) * millisecond));
    const std::vector<double> frames = levelSteps(counted, 2, 2);
    if (frames.empty()) {
        return;
    }
    features.dur20Ms = durationWithin(frames, 20, 2);
    features.dur30Ms = durationWithin(frames, 30, 2);
    features.dur40Ms = durationWithin(frames, 40, 2);

    const std::vector<double> fine = levelSteps(samples, 0.5, 0.25);
    const auto top = std::ranges::max_element(fine);
    const auto below = std::find_if(std::make_reverse_iterator(top), fine.rend(),
                                    [&](double value) { return value < *top / 100; });
    features.attackMs = 0.25 * static_cast<double>(top - below.base() + 1);

    const double level = rms(from.first(std::min<std::size_t>(from.size(), 50 * millisecond)));
    features.crestDb = decibels(static_cast<double>(peak(from))) - decibels(level);

    double total = 0;
    for (const float x : counted) {
        total += static_cast<double>(x) * static_cast<double>(x);
    }
    double sum = 0;
    for (std::size_t i = 0; i < counted.size(); ++i) {
        const double before = sum;
        sum += static_cast<double>(counted[i]) * static_cast<double>(counted[i]);
        const double ms = static_cast<double>(i) / millisecond;
        features.t50Ms = before < total * 0.5 ? ms : features.t50Ms;
        features.t90Ms = before < total * 0.9 ? ms : features.t90Ms;
    }
}

// How far the steps of a fine spectrum lie about their mean over a third of an octave.
double tonalityOf(std::span<const float> samples, std::size_t onset) {
    const std::vector<double> spectrum = powerSpectrum(samples, onset, 0, 150, 1, 16384);
    std::vector<double> away;
    const double side = std::pow(2.0, 1.0 / 6);
    const double half = std::pow(2.0, 1.0 / 48);
    for (std::size_t step = 0; step < fineCount; ++step) {
        const double hz = fineFrequency(step);
        if (hz < 300 || hz > 10000) {
            continue;
        }
        const double here = powerBetween(spectrum, hz / half, hz * half);
        const double around = powerBetween(spectrum, hz / side, hz * side) / 8;
        if (around > 0) {
            away.push_back(decibelsOfPower(here / around));
        }
    }
    const double mean = sumOf(away) / static_cast<double>(away.size());
    double squares = 0;
    for (const double value : away) {
        squares += (value - mean) * (value - mean);
    }
    return std::sqrt(squares / static_cast<double>(away.size()));
}

void measureModes(std::span<const float> samples, std::size_t onset, StrokeFeatures& features) {
    const std::vector<double> spectrum = powerSpectrum(samples, onset, 2, 90, 1, 16384);
    features.fine.resize(fineCount);
    const double half = std::pow(2.0, 1.0 / 48);
    for (std::size_t step = 0; step < fineCount; ++step) {
        const double hz = fineFrequency(step);
        features.fine[step] = powerBetween(spectrum, hz / half, hz * half) / hz;
    }
    const double total = std::max(sumOf(features.fine), 1e-20);
    for (double& value : features.fine) {
        value /= total;
    }
    constexpr std::size_t most = 8;
    std::vector<std::size_t> peaks = finePeaks(features.fine);
    peaks.resize(std::min(peaks.size(), most));
    std::ranges::transform(peaks, std::back_inserter(features.strongest), fineFrequency);
}

} // namespace

double fineFrequency(std::size_t step) {
    return fineStart * std::pow(2.0, static_cast<double>(step) / 24);
}

std::vector<std::size_t> finePeaks(std::span<const double> fine) {
    std::vector<std::size_t> peaks;
    for (std::size_t i = 2; i + 2 < fine.size(); ++i) {
        if (fine[i] > fine[i - 1] && fine[i] > fine[i - 2] && fine[i] >= fine[i + 1] &&
            fine[i] >= fine[i + 2]) {
            peaks.push_back(i);
        }
    }
    std::ranges::stable_sort(peaks, std::greater(), [&](std::size_t peak) { return fine[peak]; });
    return peaks;
}

StrokeFeatures featuresOf(std::span<const float> recording) {
    StrokeFeatures features;
    std::vector<float> samples(recording.begin(), recording.end());
    removeRumble(samples);
    if (peak(samples) <= 0) {
        return features;
    }
    const std::size_t onset = featureOnset(samples);
    measureBands(samples, onset, features);
    measureTimes(samples, onset, features);
    features.tonalityDb = tonalityOf(samples, onset);
    features.broad = broadBandsOf(samples, onset);
    features.events = eventsOf(samples, onset);
    const auto strongest = std::ranges::max_element(features.events, {}, &Event::db);
    features.gapToStrongestMs = strongest == features.events.end() ? 0 : strongest->ms;
    measureModes(samples, onset, features);
    return features;
}

} // namespace vornic::packs
