#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>

namespace vornic::DSP {

void drive(std::vector<float>& samples, double amount) noexcept {
    if (!(amount > 0.0)) {
        return;
    }
    // Saturated long before the limit, which keeps k finite: infinity times silence is no number.
    const double k = 1.0 + 4.0 * std::min(amount, 1e300);
    // The same function as for the samples, or full scale would not come out as exactly 1.
    const double norm = std::tanh(k);
    double prev = 0.0;
    for (float& sample : samples) {
        const auto x = static_cast<double>(sample);
        const double half = std::tanh(k * (prev + x) / 2.0);
        sample = static_cast<float>(0.5 * (half + std::tanh(k * x)) / norm);
        prev = x;
    }
}

} // namespace vornic::DSP
