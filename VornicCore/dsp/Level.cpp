#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vornic::DSP {

namespace {

constexpr std::size_t strikeSamples = 1920;

double strikeRms(const std::vector<float>& samples) noexcept {
    const std::size_t count = std::min(samples.size(), strikeSamples);
    double sum = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto x = static_cast<double>(samples[i]);
        sum += x * x;
    }
    return std::sqrt(sum / static_cast<double>(count));
}

} // namespace

void level(std::vector<float>& samples, double targetDb, double ceilingDb) noexcept {
    if (samples.empty()) {
        return;
    }
    const double rms = strikeRms(samples);
    if (!(rms > 1e-7)) {
        return;
    }
    double gain = factorOfDecibels(targetDb) / rms;
    const auto loudest = static_cast<double>(peak(samples));
    const double ceiling = factorOfDecibels(ceilingDb);
    if (gain * loudest > ceiling) {
        gain = ceiling / loudest;
    }
    if (!std::isfinite(gain)) {
        return;
    }
    for (float& x : samples) {
        x = static_cast<float>(static_cast<double>(x) * gain);
    }
}

} // namespace vornic::DSP
