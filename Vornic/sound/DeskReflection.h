#pragma once

#include "VornicCore/board/StageSpec.h"

namespace vornic {

/// The early reflection of the desk, as the sampler takes it. Thread: any, as everything here.
struct DeskReflection {
    /// Level, 0 = none.
    float level = 0.0f;
    /// Smoothing coefficient of its taps; smaller is duller.
    float damp = 0.35f;

    bool operator==(const DeskReflection&) const = default;
};

/// A keyboard at the fingers (distance 0) has no reflection; a step back (distance 1) it stands at
/// 0.35 of the direct sound. A desk mat takes half of it and most of its highs. A distance outside
/// 0…1 counts as the nearer end, one that is no number as 0.
DeskReflection deskReflection(const StageSpec& stage);

} // namespace vornic
