#include "packs/analysis/BroadBands.h"

#include "packs/analysis/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vornic::packs {

namespace {

constexpr double sampleRate = 48000;
constexpr std::size_t framesPerMs = 48;

// The whole transform of a stroke, to be cut into bands.
std::vector<std::complex<double>> transformOf(std::span<const float> samples) {
    std::size_t size = 1024;
    while (size < samples.size() + 960) {
        size *= 2;
    }
    std::vector<std::complex<double>> values(size);
    std::ranges::copy(samples, values.begin());
    fourier(values);
    return values;
}

// Power against time within a band whose edges are those of a fourth-order Butterworth.
std::vector<double> bandEnvelope(const std::vector<std::complex<double>>& spectrum, double fromHz,
                                 double toHz) {
    const std::size_t size = spectrum.size();
    std::vector<std::complex<double>> values(size);
    for (std::size_t bin = 1; bin < size / 2; ++bin) {
        const double hz = static_cast<double>(bin) * sampleRate / static_cast<double>(size);
        const double high = 1 / std::sqrt(1 + std::pow(fromHz / hz, 8));
        const double low = 1 / std::sqrt(1 + std::pow(hz / toHz, 8));
        // Positive frequencies only: the magnitude of what comes back is the envelope.
        values[bin] = spectrum[bin] * (2 * high * low / static_cast<double>(size));
    }
    fourier(values, true);
    std::vector<double> power(size);
    std::ranges::transform(values, power.begin(),
                           [](const std::complex<double>& value) { return std::norm(value); });
    return power;
}

double meanOver(const std::vector<double>& power, std::ptrdiff_t from, std::size_t length) {
    double sum = 0;
    for (std::ptrdiff_t i = from; i < from + static_cast<std::ptrdiff_t>(length); ++i) {
        if (i >= 0 && i < std::ssize(power)) {
            sum += power[static_cast<std::size_t>(i)];
        }
    }
    return sum / static_cast<double>(length);
}

// The slope of the level from its peak to where it has fallen by 20 dB, as a time constant.
std::optional<double> decayOf(const std::vector<double>& power, std::size_t onset) {
    constexpr std::size_t window = 2 * framesPerMs;
    constexpr std::size_t step = framesPerMs / 4;
    constexpr std::size_t longest = 160 * framesPerMs;
    std::vector<double> level;
    for (std::size_t at = onset - std::min(onset, 2 * framesPerMs);
         at < std::min(power.size(), onset + longest); at += step) {
        level.push_back(10 * std::log10(std::max(
                                 meanOver(power, static_cast<std::ptrdiff_t>(at), window), 1e-20)));
    }
    const auto top = std::ranges::max_element(level);
    const auto end =
        std::find_if(top, level.end(), [&](double value) { return value < *top - 20; });
    const auto count = static_cast<double>(end - top);
    if (end == level.end() || count < 3) {
        return std::nullopt;
    }
    const double meanX = (count - 1) / 2;
    const double meanY = std::accumulate(top, end, 0.0) / count;
    double xy = 0;
    double xx = 0;
    for (auto at = top; at != end; ++at) {
        const double x = static_cast<double>(at - top) - meanX;
        xy += x * (*at - meanY);
        xx += x * x;
    }
    const double slope = xy / xx; // decibels a step
    constexpr double stepMs = 0.25;
    return slope < 0 ? std::optional(-20 / std::log(10.0) * stepMs / slope) : std::nullopt;
}

} // namespace

std::size_t broadOf(double hz) {
    std::size_t band = 0;
    while (band + 1 < broadCount && hz >= broadEdges[band + 1]) {
        ++band;
    }
    return band;
}

BroadBands broadBandsOf(std::span<const float> samples, std::size_t onset) {
    BroadBands result{};
    const auto spectrum = transformOf(samples);
    std::array<std::array<double, envelopeSteps>, broadCount> frames{};
    // The loudest lies between the steps as a rule.
    constexpr std::size_t finer = framesPerMs / 2;
    std::vector<double> all(4 * envelopeSteps * framesPerMs / finer);
    for (std::size_t band = 0; band < broadCount; ++band) {
        const auto power = bandEnvelope(spectrum, broadEdges[band], broadEdges[band + 1]);
        result.decayMs[band] = decayOf(power, onset);
        for (std::size_t step = 0; step < envelopeSteps; ++step) {
            const auto from = static_cast<std::ptrdiff_t>(onset + 4 * framesPerMs * step) -
                              static_cast<std::ptrdiff_t>(3 * framesPerMs);
            frames[band][step] = meanOver(power, from, 2 * framesPerMs);
        }
        for (std::size_t at = 0; at < all.size(); ++at) {
            const auto from = static_cast<std::ptrdiff_t>(onset + at * finer) -
                              static_cast<std::ptrdiff_t>(3 * framesPerMs);
            all[at] += meanOver(power, from, 2 * framesPerMs);
        }
    }
    const double loudest = *std::ranges::max_element(all);
    for (std::size_t band = 0; band < broadCount; ++band) {
        std::ranges::transform(frames[band], result.envelopeDb[band].begin(), [&](double power) {
            return std::max(10 * std::log10(std::max(power, 1e-20) / std::max(loudest, 1e-20)),
                            -45.0);
        });
    }
    return result;
}

std::optional<double> modeDecay(std::span<const float> samples, std::size_t onset, double hz) {
    return decayOf(bandEnvelope(transformOf(samples), hz * 0.94, hz * 1.06), onset);
}

} // namespace vornic::packs
