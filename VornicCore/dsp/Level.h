#pragma once

#include <vector>

namespace vornic::DSP {

/// Brings the first 40 ms of `samples` to an RMS of `targetDb` dBFS, in place: strokes of different
/// lengths become equally loud at the strike. Where the peak of the whole would exceed `ceilingDb`
/// dBFS, it lands on it instead. Unchanged if those 40 ms are silent (RMS not above 1e-7) or the
/// gain would not be finite.
void level(std::vector<float>& samples, double targetDb, double ceilingDb) noexcept;

} // namespace vornic::DSP
