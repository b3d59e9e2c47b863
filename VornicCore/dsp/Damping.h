#pragma once

#include <vector>

namespace vornic::DSP {

/// A muting pad: darkens and shortens `samples` in place from `startMs` on, after a cross-fade of
/// 2 ms. `amount` 0...1 moves the low-pass from 20 kHz to 2 kHz and the decay from 200 ms to 8 ms;
/// more counts as 1. Unchanged if `amount` is not above 0 or `startMs` is not a number.
void damping(std::vector<float>& samples, double amount, double startMs) noexcept;

} // namespace vornic::DSP
