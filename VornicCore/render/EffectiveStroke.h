#pragma once

#include "VornicCore/render/RenderJob.h"

#include <vector>

namespace vornic {

/// What a stroke comes to once parts and character have had their say: a value to render or show.
/// Thread: any, as everything here.
struct EffectiveStroke {
    ChainParams chain;
    /// The stroke's own layers, followed by those that the parts ask for.
    std::vector<LayerSpec> layers;

    bool operator==(const EffectiveStroke&) const = default;
};

namespace Renderer {
/// The chain and layers of `stroke` with the job's parts and character applied: the difference
/// between wanted and recorded parts first, then the characters of sound and board together.
EffectiveStroke effective(const StrokeSpec& stroke, const RenderJob& job);
} // namespace Renderer

/// What plays of `layers`: those not muted, and of these only the solo ones if any layer is solo.
std::vector<LayerSpec> heard(const std::vector<LayerSpec>& layers);

} // namespace vornic
