#pragma once

#include "VornicCore/strokes/Stroke.h"

#include <vector>

namespace vornic {

/// What `Slicer::strokes` must give, in the plainest way: whole sorts, a pass for every step, no
/// shared intermediate results. The rate is positive.
std::vector<Stroke> plainStrokes(const std::vector<float>& samples, double sampleRate);

/// The root of the mean square of the quietest fifth, by sorting everything.
double plainQuietestFifthRms(const std::vector<float>& samples);

} // namespace vornic
