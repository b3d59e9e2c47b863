#pragma once

#include "VornicCore/board/ChainParams.h"
#include "VornicCore/render/LaneKernels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vornic {

/// The chains of the strokes that share the lanes. Thread: any, as everything here.
using LaneChains = std::array<ChainParams, static_cast<std::size_t>(laneCount)>;

/// The sections whose settings all strokes of a job share: corners and middle bands.
std::vector<LaneSection> sharedSections(const ChainParams& chain);

/// The sections that velocity and variation change: bass, click and air.
std::vector<LaneSection> ownSections(const LaneChains& chains);

/// The resonances of a body, for all lanes.
struct LaneBody {
    std::vector<LaneMode> modes; // empty: no body
    std::int64_t tail = 0;       // frames
    double mix = 0;

    explicit LaneBody(const ChainParams& chain);
};

/// Damping and drive, into what `finish` takes.
void setDampingAndDrive(LaneFinish& finish, const ChainParams& chain);

} // namespace vornic
