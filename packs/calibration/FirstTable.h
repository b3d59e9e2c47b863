#pragma once

#include "packs/analysis/ClassFeatures.h"
#include "packs/model/PackTable.h"

namespace vornic::packs {

/// What a class's figures say directly: event times and levels, band levels, modes. The figures are
/// those of whole strokes, so the table still has to be fitted until its strokes measure like them.
StrokeTable firstTable(const ClassFeatures& target, const StrokeTable& before);

/// Sets `tilt` and `decayMs` and the like of what was not measured to what neighbours have.
Bands decaysOf(const ClassFeatures& target);

} // namespace vornic::packs
