#pragma once

#include <cstdint>
#include <vector>

namespace vornic::DSP {

/// The index of the first sample of at least 0.3 times the peak; 0 if there is no sound.
[[nodiscard]] std::int64_t onset(const std::vector<float>& samples) noexcept;

} // namespace vornic::DSP
