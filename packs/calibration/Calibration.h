#pragma once

#include "packs/analysis/ClassFeatures.h"
#include "packs/model/PackTable.h"

#include <string>

namespace vornic::packs {

/// Changes the strokes of `keyClass` in `table` step by step until they measure like `target`;
/// keeps the best of `rounds` rounds. Returns the share of features within one standard deviation.
double calibrate(PackTable& table, const std::string& keyClass, const ClassFeatures& target,
                 int rounds);

} // namespace vornic::packs
