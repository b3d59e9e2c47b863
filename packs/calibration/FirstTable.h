#pragma once

#include "packs/analysis/ClassFeatures.h"
#include "packs/model/PackTable.h"

namespace vornic::packs {

/// What a class's figures say directly: event times and levels, band levels, modes. The figures are
/// those of whole strokes, so the table still has to be fitted until its strokes measure like them.
StrokeTable firstTable(const ClassFeatures& target, const StrokeTable& before);

/// A standard deviation that outliers do not widen.
double usualSpread(const Statistic& statistic);

/// The decay of each third octave; bands that show none take that of the next below.
Bands decaysOf(const ClassFeatures& target);

} // namespace vornic::packs
