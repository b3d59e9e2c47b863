#pragma once

#include <vector>

namespace vornic::DSP {

/// Soft saturation by tanh, in place; full scale stays full scale. Unchanged if `amount` is not
/// above 0.
void drive(std::vector<float>& samples, double amount) noexcept;

} // namespace vornic::DSP
