#pragma once

#include <span>

namespace vornic {

/// The root of the mean square of the quietest fifth of `samples` (of the quietest one where there
/// are fewer than ten; 0 where there is none): what remains of a recording between the keys. The
/// squares, singles, are added in ascending order as doubles. No sample is NaN. Thread: any.
[[nodiscard]] double quietestFifthRms(std::span<const float> samples);

} // namespace vornic
