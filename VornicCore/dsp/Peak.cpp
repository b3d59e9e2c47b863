#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>

namespace vornic::DSP {

float peak(const std::vector<float>& samples) noexcept {
    float result = 0.0F;
    // std::max keeps its first argument when the second is no number.
    for (const float x : samples) {
        result = std::max(result, std::abs(x));
    }
    return result;
}

} // namespace vornic::DSP
