#pragma once

#include "VornicCore/dsp/Mode.h"

#include <vector>

namespace vornic::DSP {

/// The longest ring-out that body() adds, in samples (10 s): a mode of an absurd decay time must
/// not ask for all memory.
inline constexpr double longestTail = 480000.0;

/// Adds the ringing of `modes` to `samples`, normalised to the peak of the sound and scaled by
/// `mix`; the buffer grows by three times the longest decay time. Unchanged if `mix` is not above
/// 0, or there are no modes or no sound. A mode that could not ring (a value that is not finite, a
/// decay time below 0) is passed over.
void body(std::vector<float>& samples, const std::vector<Mode>& modes, double mix);

} // namespace vornic::DSP
