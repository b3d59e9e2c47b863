#include "VornicCore/dsp/Peak.h"

#include <cmath>

namespace vornic::DSP {

float peak(const std::vector<float>& samples) noexcept {
    float result = 0.0F;
    for (const float x : samples) {
        const float magnitude = std::abs(x);
        if (magnitude > result) {
            result = magnitude;
        }
    }
    return result;
}

} // namespace vornic::DSP
