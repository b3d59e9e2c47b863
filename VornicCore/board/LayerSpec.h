#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/base/Uuid.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// What a layer's recording is of.
enum class LayerPart : std::uint8_t { bottomOut, topOut, spring, click, rattle, caseKnock };

template <>
struct CaseNames<LayerPart> {
    static constexpr std::array names{
        CaseName{LayerPart::bottomOut, "bottomOut", "Bottom-out"},
        CaseName{LayerPart::topOut, "topOut", "Top-out"},
        CaseName{LayerPart::spring, "spring", "Spring ping"},
        CaseName{LayerPart::click, "click", "Click"},
        CaseName{LayerPart::rattle, "rattle", "Stabiliser rattle"},
        CaseName{LayerPart::caseKnock, "caseKnock", "Case knock"},
    };
};

/// One recording, or a choice of several, in the mix of a stroke.
struct LayerSpec {
    Uuid id = Uuid::random();
    LayerPart part = LayerPart::bottomOut;
    /// Ids in the sample library, one of which plays in each variation.
    std::vector<std::string> samples;
    /// Where the layer starts, in milliseconds.
    double offsetMs = 0;
    double gainDb = 0;
    /// Semitones.
    double pitch = 0;
    /// Turns the polarity round.
    bool invert = false;
    bool muted = false;
    bool solo = false;

    LayerSpec() = default;

    /// A layer with a fresh id and no flag set.
    LayerSpec(LayerPart givenPart, std::vector<std::string> givenSamples, double givenOffsetMs,
              double givenGainDb, double givenPitch)
        : part(givenPart), samples(std::move(givenSamples)), offsetMs(givenOffsetMs),
          gainDb(givenGainDb), pitch(givenPitch) {}

    bool operator==(const LayerSpec&) const = default;
};

/// Whether a layer plays among `layers`: one that is not muted, and, where any of them is solo,
/// only a solo one. Thread: any.
inline bool isHeard(const LayerSpec& layer, std::span<const LayerSpec> layers) {
    return !layer.muted && (layer.solo || std::ranges::none_of(layers, &LayerSpec::solo));
}

} // namespace vornic
