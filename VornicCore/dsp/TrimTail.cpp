#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vornic::DSP {

namespace {

constexpr std::size_t fadeSamples = 192;

} // namespace

void trimTail(std::vector<float>& samples, double floorDb) noexcept {
    if (std::isnan(floorDb)) {
        return;
    }
    const float threshold = peak(samples) * static_cast<float>(std::pow(10.0, floorDb / 20.0));
    std::size_t kept = samples.size();
    while (kept > 0 && !(std::abs(samples[kept - 1]) > threshold)) {
        --kept;
    }
    if (kept == 0) {
        samples.clear();
        return;
    }
    // `kept` is one more than the index of the last loud sample.
    samples.resize(std::min(samples.size(), kept - 1 + fadeSamples));
    fadeEnd(samples);
}

void fadeEnd(std::span<float> samples) noexcept {
    const std::size_t n = samples.size();
    if (n < 3) {
        return;
    }
    const std::size_t fade = std::min(n / 3, fadeSamples);
    for (std::size_t j = 0; j < fade; ++j) {
        float& x = samples[n - 1 - j];
        const double gain = static_cast<double>(j) / static_cast<double>(fade);
        x = static_cast<float>(static_cast<double>(x) * gain);
    }
}

} // namespace vornic::DSP
