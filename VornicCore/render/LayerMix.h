#pragma once

#include "VornicCore/board/LayerSpec.h"
#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/render/LaneKernels.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vornic {

/// The name of the recording that a layer uses for a variant; none if it lists none.
/// Thread: any, as everything here.
const std::string* chosenRecording(const LayerSpec& layer, std::int64_t variant);

/// A layer's recording, shifted and with its gain; where its attack is.
struct ShiftedLayer {
    std::vector<float> samples;
    std::int64_t onset = 0;
};

/// The recording of that name as `layer` plays it; none if the source has none. Samples that are
/// not finite become 0.
std::optional<ShiftedLayer> shiftedLayer(const LayerSpec& layer, const std::string& recording,
                                         const SampleSource& library);

/// The same, faster, within a rounding error.
std::optional<ShiftedLayer> shiftedLayer(const LayerSpec& layer, const std::string& recording,
                                         const SampleSource& library, const LaneKernels& kernels);

/// A shifted layer (not null) and when it begins.
struct PlacedLayer {
    const ShiftedLayer* layer;
    double offsetMs;
};

/// The sum of the layers, each at its offset, from the beginning of the first to the end of the
/// last. With `alignAttacks`, offsets count between the attacks and not the beginnings.
std::vector<float> mixed(std::span<const PlacedLayer> layers, bool alignAttacks);

} // namespace vornic
