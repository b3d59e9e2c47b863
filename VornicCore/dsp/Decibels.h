#pragma once

#include <algorithm>
#include <cmath>

namespace vornic::DSP {

/// The factor of a gain in dB: 10^(db/20). Gains above 400 dB count as 400, which keeps the factor,
/// and any product with a sample of audio, finite.
inline double factorOfDecibels(double db) noexcept {
    return std::pow(10.0, std::min(db, 400.0) / 20.0);
}

} // namespace vornic::DSP
