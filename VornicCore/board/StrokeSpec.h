#pragma once

#include "VornicCore/board/ChainParams.h"
#include "VornicCore/board/LayerSpec.h"

#include <utility>
#include <vector>

namespace vornic {

/// The sound of a key on its way down or up: layers, and what is done to their mix. Thread: any.
struct StrokeSpec {
    std::vector<LayerSpec> layers;
    /// Whether the layers are shifted so that their attacks coincide, before their own offsets.
    bool alignAttacks = true;
    ChainParams chain;

    StrokeSpec() = default;

    explicit StrokeSpec(std::vector<LayerSpec> givenLayers,
                        ChainParams givenChain = ChainParams::neutral())
        : layers(std::move(givenLayers)), chain(std::move(givenChain)) {}

    bool operator==(const StrokeSpec&) const = default;
};

} // namespace vornic
