#pragma once

#include <vector>

namespace vornic::DSP {

/// The largest magnitude in `samples`; 0 if there are none. Samples that are not numbers are passed
/// over.
[[nodiscard]] float peak(const std::vector<float>& samples) noexcept;

} // namespace vornic::DSP
