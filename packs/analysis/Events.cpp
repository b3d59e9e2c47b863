#include "packs/analysis/Events.h"

#include "packs/analysis/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace vornic::packs {

namespace {

constexpr double framesPerMs = 48;
constexpr double stepMs = 0.5;
constexpr double prominence = 6;
constexpr double apartMs = 2.5;
constexpr double range = 26;

double decibelsOfPower(double power) {
    return 10 * std::log10(std::max(power, 1e-20));
}

// How far the level falls on both sides of `peak` before it rises above it.
double prominenceOf(const std::vector<double>& level, std::size_t peak) {
    const auto fall = [&](const auto& begin, const auto& end) {
        double least = level[peak];
        for (auto at = begin; at != end && *at <= level[peak]; ++at) {
            least = std::min(least, *at);
        }
        return level[peak] - least;
    };
    const auto at = level.begin() + static_cast<std::ptrdiff_t>(peak);
    return std::min(fall(std::make_reverse_iterator(at), level.rend()),
                    fall(std::next(at), level.end()));
}

std::vector<std::size_t> peaksOf(const std::vector<double>& level, std::size_t first) {
    std::vector<std::size_t> peaks;
    const double top = *std::ranges::max_element(level);
    for (std::size_t i = std::max<std::size_t>(first, 1); i + 1 < level.size(); ++i) {
        if (level[i] >= level[i - 1] && level[i] > level[i + 1] && level[i] >= top - range &&
            prominenceOf(level, i) >= prominence) {
            peaks.push_back(i);
        }
    }
    return peaks;
}

// The loudest first; one too close to a louder one is none.
std::vector<std::size_t> apart(std::vector<std::size_t> peaks, const std::vector<double>& level) {
    std::ranges::stable_sort(peaks, std::greater(), [&](std::size_t peak) { return level[peak]; });
    std::vector<std::size_t> kept;
    for (const std::size_t peak : peaks) {
        const auto isClose = [&](std::size_t other) {
            const std::size_t distance = peak > other ? peak - other : other - peak;
            return static_cast<double>(distance) * stepMs < apartMs;
        };
        if (std::ranges::none_of(kept, isClose)) {
            kept.push_back(peak);
        }
    }
    std::ranges::sort(kept);
    return kept;
}

double centroidAt(std::span<const float> samples, double ms) {
    const std::size_t at = static_cast<std::size_t>(ms * framesPerMs);
    const Bands powers = bandPowers(powerSpectrum(samples, at, 0, 3, 0.25, 2048));
    const double sum = std::accumulate(powers.begin(), powers.end(), 0.0);
    return sum > 0
               ? std::inner_product(powers.begin(), powers.end(), bandCentres.begin(), 0.0) / sum
               : 0;
}

} // namespace

std::vector<double> levelSteps(std::span<const float> samples, double windowMs, double stepLength) {
    const auto window = static_cast<std::size_t>(windowMs * framesPerMs);
    const auto step = static_cast<std::size_t>(stepLength * framesPerMs);
    std::vector<double> result;
    for (std::size_t at = 0; at + window <= samples.size(); at += step) {
        double sum = 0;
        for (const float x : samples.subspan(at, window)) {
            sum += static_cast<double>(x) * static_cast<double>(x);
        }
        result.push_back(sum / static_cast<double>(window));
    }
    return result;
}

std::size_t featureOnset(std::span<const float> samples) {
    constexpr double finest = 1 / framesPerMs;
    constexpr std::size_t half = 24; // of the millisecond about each sample
    std::vector<float> padded(samples.size() + 2 * half);
    std::ranges::copy(samples, padded.begin() + half);
    const std::vector<double> level = levelSteps(padded, 1, finest);
    if (samples.empty()) {
        return 0;
    }
    const double least = *std::ranges::max_element(level) / 100;
    const auto found =
        std::ranges::find_if(level, [&](double value) { return value >= least && value > 0; });
    return found == level.end() ? 0 : static_cast<std::size_t>(found - level.begin());
}

std::vector<Event> eventsOf(std::span<const float> samples, std::size_t onset) {
    // Silence before, so that an attack in the first millisecond is a peak too.
    constexpr std::size_t before = 96;
    std::vector<float> padded(samples.size() + 2 * before);
    std::ranges::copy(samples, padded.begin() + before);
    std::vector<double> level = levelSteps(padded, 1, stepMs);
    std::ranges::transform(level, level.begin(), decibelsOfPower);
    const double earliest = static_cast<double>(onset + before) / framesPerMs - 6;
    const auto first = static_cast<std::size_t>(std::max(earliest, 0.0) / stepMs);
    const std::vector<std::size_t> peaks = apart(peaksOf(level, first), level);
    std::vector<Event> events;
    if (peaks.empty()) {
        return events;
    }
    const double top = *std::ranges::max_element(level);
    for (const std::size_t peak : peaks) {
        const double ms = static_cast<double>(peak) * stepMs;
        events.push_back({.ms = ms - static_cast<double>(peaks.front()) * stepMs,
                          .db = level[peak] - top,
                          .centroidHz = centroidAt(padded, ms)});
    }
    return events;
}

} // namespace vornic::packs
