#include "VornicCore/base/SampleRate.h"
#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>

namespace vornic::DSP {

namespace {

bool canRing(const Mode& mode) noexcept {
    return std::isfinite(mode.frequency) && std::isfinite(mode.decayMs) &&
           std::isfinite(mode.gainDb) && mode.decayMs >= 0.0;
}

// Adds the output of one two-pole resonator, at rest at first, to `wet`.
void ring(const Mode& mode, const std::vector<float>& samples, std::vector<double>& wet) noexcept {
    const double r = modeRadius(mode);
    const double c =
        std::cos(2.0 * std::numbers::pi * std::min(mode.frequency, 21600.0) / sampleRate);
    const double g = factorOfDecibels(mode.gainDb);
    const double back1 = 2.0 * r * c;
    const double back2 = r * r;
    const double in = g * (1.0 - r);
    double y1 = 0.0;
    double y2 = 0.0;
    for (std::size_t n = 0; n < samples.size(); ++n) {
        const double y = back1 * y1 - back2 * y2 + in * static_cast<double>(samples[n]);
        y2 = y1;
        y1 = y;
        wet[n] += y;
    }
}

double peakOf(const std::vector<double>& signal) noexcept {
    double result = 0.0;
    for (const double x : signal) {
        result = std::max(result, std::abs(x));
    }
    return result;
}

} // namespace

void body(std::vector<float>& samples, const std::vector<Mode>& modes, double mix) {
    if (!(mix > 0.0) || samples.empty()) {
        return;
    }
    std::vector<Mode> ringing;
    std::ranges::copy_if(modes, std::back_inserter(ringing), canRing);
    const auto dryPeak = static_cast<double>(peak(samples));
    if (ringing.empty() || dryPeak == 0.0) {
        return;
    }
    const double longest = std::ranges::max(ringing, {}, &Mode::decayMs).decayMs;
    const double tail = std::min(longest / 1000.0 * 3.0 * sampleRate, longestTail);
    samples.resize(samples.size() + static_cast<std::size_t>(tail));
    std::vector<double> wet(samples.size());
    for (const Mode& mode : ringing) {
        ring(mode, samples, wet);
    }
    const double wetPeak = peakOf(wet);
    const double k = wetPeak > 0.0 ? mix * dryPeak / wetPeak : 0.0;
    if (!std::isfinite(k)) {
        return;
    }
    for (std::size_t n = 0; n < samples.size(); ++n) {
        samples[n] = static_cast<float>(static_cast<double>(samples[n]) + k * wet[n]);
    }
}

} // namespace vornic::DSP
