#pragma once

#include "VornicCore/base/SampleRate.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vornic::DSP {

/// One second-order section in transposed direct form II, all in double precision. The coefficients
/// are those of Robert Bristow-Johnson's audio-EQ cookbook, divided by a0. Its state belongs to
/// whoever holds it. Thread: any.
struct Biquad {
    enum class Kind : std::uint8_t { lowShelf, highShelf, peak, highPass, lowPass, bandPass };

    /// A section with zero state. `frequency` in Hz is moved to 10 Hz if below (or not a number),
    /// then to 0.49 of the rate if above. `gainDb` counts for shelves and peak only and is moved
    /// into -400...400 dB (0 if not a number); `q` is at least 0.000001. A rate that is infinite
    /// or not above 0 counts as DSP::sampleRate.
    Biquad(Kind kind, double frequency, double q, double gainDb, double rate = sampleRate) noexcept;

    double b0;
    double b1;
    double b2;
    double a1;
    double a2;
    double z1 = 0.0;
    double z2 = 0.0;

    /// Filters one sample.
    double process(double x) noexcept {
        const double y = b0 * x + z1;
        z1 = z2 + b1 * x - a1 * y;
        z2 = b2 * x - a2 * y;
        return y;
    }

    /// Filters `samples` in place; the state goes on from call to call.
    void run(std::vector<float>& samples) noexcept;

    /// What the section makes of a steady sine of `frequency` Hz at `rate`: its transfer function
    /// on the unit circle, whose magnitude is the gain and whose argument is the shift of phase.
    [[nodiscard]] std::complex<double> response(double frequency,
                                                double rate = sampleRate) const noexcept;

    bool operator==(const Biquad&) const = default;
};

} // namespace vornic::DSP
