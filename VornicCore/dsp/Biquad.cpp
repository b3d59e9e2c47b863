#include "VornicCore/dsp/Biquad.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic::DSP {

namespace {

// Written so that what is not a number becomes the limit.
double atLeast(double value, double limit) noexcept {
    return value >= limit ? value : limit;
}

double limitedGain(double db) noexcept {
    return std::isnan(db) ? 0.0 : std::clamp(db, -400.0, 400.0);
}

} // namespace

// A kind that is none gives silence.
Biquad::Biquad(Kind kind, double frequency, double q, double gainDb, double rate) noexcept
    : b0(0.0), b1(0.0), b2(0.0), a1(0.0), a2(0.0) {
    const double fs = rate > 0.0 && std::isfinite(rate) ? rate : sampleRate;
    const double f = std::min(atLeast(frequency, 10.0), 0.49 * fs);
    const double w0 = 2.0 * std::numbers::pi * f / fs;
    const double c = std::cos(w0);
    const double s = std::sin(w0);
    const double alpha = s / (2.0 * atLeast(q, 1e-6));
    const double A = std::pow(10.0, limitedGain(gainDb) / 40.0);
    const double slope = 2.0 * std::sqrt(A) * alpha;
    // The common case of a0, a1 and a2; the others write over it.
    double a0 = 1.0 + alpha;
    a1 = -2.0 * c;
    a2 = 1.0 - alpha;
    switch (kind) {
    case Kind::lowShelf:
        b0 = A * ((A + 1.0) - (A - 1.0) * c + slope);
        b1 = 2.0 * A * ((A - 1.0) - (A + 1.0) * c);
        b2 = A * ((A + 1.0) - (A - 1.0) * c - slope);
        a0 = (A + 1.0) + (A - 1.0) * c + slope;
        a1 = -2.0 * ((A - 1.0) + (A + 1.0) * c);
        a2 = (A + 1.0) + (A - 1.0) * c - slope;
        break;
    case Kind::highShelf:
        b0 = A * ((A + 1.0) + (A - 1.0) * c + slope);
        b1 = -2.0 * A * ((A - 1.0) + (A + 1.0) * c);
        b2 = A * ((A + 1.0) + (A - 1.0) * c - slope);
        a0 = (A + 1.0) - (A - 1.0) * c + slope;
        a1 = 2.0 * ((A - 1.0) - (A + 1.0) * c);
        a2 = (A + 1.0) - (A - 1.0) * c - slope;
        break;
    case Kind::peak:
        b0 = 1.0 + alpha * A;
        b1 = -2.0 * c;
        b2 = 1.0 - alpha * A;
        a0 = 1.0 + alpha / A;
        a2 = 1.0 - alpha / A;
        break;
    case Kind::highPass:
        b0 = (1.0 + c) / 2.0;
        b1 = -(1.0 + c);
        b2 = (1.0 + c) / 2.0;
        break;
    case Kind::lowPass:
        b0 = (1.0 - c) / 2.0;
        b1 = 1.0 - c;
        b2 = (1.0 - c) / 2.0;
        break;
    case Kind::bandPass:
        b0 = alpha;
        b1 = 0.0;
        b2 = -alpha;
        break;
    }
    for (double* coefficient : {&b0, &b1, &b2, &a1, &a2}) {
        *coefficient /= a0;
    }
}

std::complex<double> Biquad::response(double frequency, double rate) const noexcept {
    // z to the power of -1.
    const std::complex<double> back = std::polar(1.0, -2.0 * std::numbers::pi * frequency / rate);
    return (b0 + (b1 + b2 * back) * back) / (1.0 + (a1 + a2 * back) * back);
}

void Biquad::run(std::vector<float>& samples) noexcept {
    for (float& x : samples) {
        x = static_cast<float>(process(static_cast<double>(x)));
    }
}

} // namespace vornic::DSP
