#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vornic::DSP {

namespace {

// The cubic at `t` from y1 (t = 0) to y2 (t = 1), in single precision throughout.
float catmullRom(float y0, float y1, float y2, float y3, float t) noexcept {
    const float c0 = y1;
    const float c1 = 0.5F * (y2 - y0);
    const float c2 = y0 - 2.5F * y1 + 2.0F * y2 - 0.5F * y3;
    const float c3 = 0.5F * (y3 - y0) + 1.5F * (y1 - y2);
    return ((c3 * t + c2) * t + c1) * t + c0;
}

} // namespace

std::vector<float> resample(const std::vector<float>& samples, double semitones) {
    if (semitones == 0.0 || std::isnan(semitones) || samples.size() < 2) {
        return samples;
    }
    const double ratio = std::pow(2.0, std::max(semitones, lowestPitch) / 12.0);
    // The ratio is at least 1/64: the length always fits.
    const auto length = static_cast<std::size_t>(static_cast<double>(samples.size()) / ratio);
    const auto at = [&](std::size_t index) { return index < samples.size() ? samples[index] : 0; };
    std::vector<float> result(length);
    for (std::size_t i = 0; i < length; ++i) {
        const double position = ratio * static_cast<double>(i);
        const auto j = static_cast<std::size_t>(position);
        const auto t = static_cast<float>(position - static_cast<double>(j));
        const float before = j > 0 ? samples[j - 1] : 0.0F;
        result[i] = t == 0.0F ? at(j) : catmullRom(before, at(j), at(j + 1), at(j + 2), t);
    }
    return result;
}

} // namespace vornic::DSP
