#pragma once

#include <vector>

namespace vornic::DSP {

/// Cuts `samples` 4 ms after the last one above `floorDb` dB relative to the peak, and fades the
/// last 4 ms (a third, if that is less) to 0. Empty if no sample is above; unchanged if `floorDb`
/// is not a number.
void trimTail(std::vector<float>& samples, double floorDb) noexcept;

} // namespace vornic::DSP
