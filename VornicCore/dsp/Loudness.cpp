#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/dsp/DSP.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vornic::DSP {

namespace {

constexpr std::size_t window = 19'200;

Biquad section(double b0, double b1, double b2, double a1, double a2) noexcept {
    Biquad result(Biquad::Kind::peak, 1000.0, 1.0, 0.0);
    result.b0 = b0;
    result.b1 = b1;
    result.b2 = b2;
    result.a1 = a1;
    result.a2 = a2;
    return result;
}

} // namespace

double weightedPower(std::span<const float> samples) noexcept {
    // The recommendation's tables 1 and 2, for 48 kHz.
    Biquad head = section(1.53512485958697, -2.69169618940638, 1.19839281085285, -1.69065929318241,
                          0.73248077421585);
    Biquad low = section(1.0, -2.0, 1.0, -1.99004745483398, 0.99007225036621);
    double sum = 0.0;
    for (const float sample : samples.first(std::min(samples.size(), window))) {
        const double weighted = low.process(head.process(static_cast<double>(sample)));
        sum += weighted * weighted;
    }
    return sum / static_cast<double>(window);
}

double loudnessOfPower(double power) noexcept {
    return -0.691 + 10.0 * std::log10(power);
}

} // namespace vornic::DSP
