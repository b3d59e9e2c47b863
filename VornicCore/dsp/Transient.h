#pragma once

#include <vector>

namespace vornic::DSP {

/// Raises or lowers the strike by `attackDb` and the decay by `sustainDb`, in place. Where a fast
/// follower of the level leads a slow one the attack gain applies, where the slow one leads the
/// sustain gain, with a smooth blend between. Both exactly 0, or either not a number: unchanged.
void transient(std::vector<float>& samples, double attackDb, double sustainDb) noexcept;

} // namespace vornic::DSP
