#pragma once

#include "packs/analysis/ClassFeatures.h"

#include <string>
#include <vector>

namespace vornic::packs {

/// One feature of a class beside its target.
struct Distance {
    std::string group; // what kind of feature
    std::string name;
    double measured;
    double target;
    /// In the target's own standard deviations. Of a spread: the logarithm to base 2 of the ratio
    /// of the standard deviations. Of a mode's frequency: cents over its jitter.
    double deviations;
};

/// Every feature that `target` holds and that can be compared.
std::vector<Distance> distances(const ClassFeatures& measured, const ClassFeatures& target);

/// The share of `rows` that lie within one.
double shareWithin(const std::vector<Distance>& rows, const std::string& group = {});

} // namespace vornic::packs
