#include "VornicCore/base/SampleRate.h"
#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace vornic::DSP {

void damping(std::vector<float>& samples, double amount, double startMs) noexcept {
    if (!(amount > 0.0) || std::isnan(startMs)) {
        return;
    }
    const double a = std::min(amount, 1.0);
    // Stays a double, so that no start is out of range.
    const double start = std::trunc(startMs / 1000.0 * sampleRate);
    const double cutoff = 20000.0 * std::pow(0.1, a);
    const double p = std::exp(-2.0 * std::numbers::pi * cutoff / sampleRate);
    const double decay = (200.0 - 192.0 * a) / 1000.0 * sampleRate;
    double lp = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto x = static_cast<double>(samples[i]);
        const double d = static_cast<double>(i) - start;
        if (d < 0.0) {
            lp = x;
            continue;
        }
        lp += (1.0 - p) * (x - lp);
        const double env = std::exp(-d / decay);
        const double ramp = std::min(d / 96.0, 1.0);
        samples[i] = static_cast<float>(lp * env * ramp + (1.0 - ramp) * x);
    }
}

} // namespace vornic::DSP
