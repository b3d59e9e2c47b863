#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>

namespace vornic::DSP {

std::int64_t onset(const std::vector<float>& samples) noexcept {
    const float loudest = peak(samples);
    if (loudest == 0.0F) {
        return 0;
    }
    const float threshold = 0.3F * loudest;
    const auto first =
        std::ranges::find_if(samples, [&](float x) { return std::abs(x) >= threshold; });
    return first - samples.begin();
}

} // namespace vornic::DSP
