#pragma once

#include "packs/analysis/ClassFeatures.h"

#include <cstdint>
#include <string>
#include <vector>

/// What is measured of one stroke, as a list of numbers that strokes can be told apart by.
namespace vornic::packs {

/// One number for each of `figureNames()`; not a number where it could not be measured.
using Figures = std::vector<double>;

/// Levels in dB, times and frequencies as logarithms. Thread: any.
const std::vector<std::string>& figureNames();

/// Of a measured stroke. Thread: any.
Figures figuresOf(const StrokeFeatures& stroke);

/// Each figure with mean 0 and deviation 1 over the strokes; what is not known is 0. Thread: any.
std::vector<Figures> standardised(const std::vector<Figures>& strokes);

/// Of `count` strokes as a keyboard with these statistics could have them; no real strokes. Each
/// figure has the median and the spread that was measured. How the figures of a stroke hang
/// together is not in the statistics: that is lent by the strokes of `lender`, with a part of
/// chance; if there are none, each figure is drawn for itself. Equal seeds give equal figures.
/// Thread: any.
std::vector<Figures> drawnFigures(const ClassFeatures& keyboard, const std::vector<Figures>& lender,
                                  std::size_t count, std::uint64_t seed);

} // namespace vornic::packs
