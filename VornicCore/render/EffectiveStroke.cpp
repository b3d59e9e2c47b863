#include "VornicCore/render/EffectiveStroke.h"

#include "VornicCore/parts/Parts.h"
#include "VornicCore/render/PartSamples.h"
#include "VornicCore/render/StrokeVariation.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace vornic {

namespace {

using Band = Equalizer::Band;

PartEffect correction(const RenderJob& job) {
    return (Parts::effect(job.sound.switchParts) - Parts::effect(job.sound.recordedAs)) +
           (Parts::effect(job.build) - Parts::effect(job.recordedBuild));
}

Character sum(const Character& a, const Character& b) {
    return {.depth = a.depth + b.depth,
            .snap = a.snap + b.snap,
            .ring = a.ring + b.ring,
            .size = a.size + b.size};
}

void applyParts(ChainParams& chain, const PartEffect& effect, const BuildParts& build) {
    for (const auto& [band, gainDb] : effect.eq) {
        addGain(chain.eq, band, gainDb);
    }
    chain.attackDb += effect.attackDb;
    chain.sustainDb += effect.sustainDb;
    chain.damping = std::clamp(chain.damping + effect.damping, 0.0, 1.0);
    chain.drive = std::clamp(chain.drive + effect.drive, 0.0, 1.0);
    chain.pitch += effect.pitch;
    if (effect.ring > 0) {
        std::ranges::copy(Parts::modes(build), std::back_inserter(chain.bodyModes));
        chain.bodyMix += 0.6 * effect.ring;
    } else if (effect.ring < 0) {
        chain.damping += -0.5 * effect.ring;
    }
}

void applyCharacter(ChainParams& chain, const Character& character) {
    const double d = character.depth;
    const double s = character.snap;
    const double r = character.ring;
    const double z = character.size;
    addGain(chain.eq, Band::bass, 6 * d);
    addGain(chain.eq, Band::body, 2 * d);
    chain.pitch += -0.7 * d - 2.5 * z;
    chain.attackDb += 6 * s;
    addGain(chain.eq, Band::click, 4 * s);
    addGain(chain.eq, Band::air, 2 * s);
    chain.sustainDb += 6 * r;
    chain.damping += r * (r < 0 ? -0.5 : -0.3);
}

LayerSpec partLayer(LayerPart part, std::string_view key, double offsetMs, double gainDb) {
    LayerSpec layer(part, {std::string(key)}, offsetMs, gainDb, 0);
    // The same every time, so that equal jobs have equal layers.
    layer.id = Uuid({static_cast<std::uint8_t>(part)});
    return layer;
}

void addPartLayers(std::vector<LayerSpec>& layers, const PartEffect& effect,
                   const std::optional<StabParts>& stabs) {
    if (effect.clickLayerDb) {
        layers.push_back(
            partLayer(LayerPart::click, PartSamples::clickKey, 0, *effect.clickLayerDb));
    }
    if (effect.springLayerDb) {
        layers.push_back(
            partLayer(LayerPart::spring, PartSamples::springKey, 3, *effect.springLayerDb));
    }
    if (stabs) {
        if (const auto rattleDb = Parts::rattleDb(*stabs)) {
            layers.push_back(partLayer(LayerPart::rattle, PartSamples::rattleKey, 8, *rattleDb));
        }
    }
}

} // namespace

EffectiveStroke Renderer::effective(const StrokeSpec& stroke, const RenderJob& job) {
    const PartEffect effect = correction(job);
    EffectiveStroke result{.chain = stroke.chain, .layers = stroke.layers};
    applyParts(result.chain, effect, job.build);
    applyCharacter(result.chain, sum(job.sound.character, job.boardCharacter));
    // A band that nothing changed may still be as far out as a file had it.
    for (const auto& [band, gain] : ChainParams(result.chain).eq.gains) {
        result.chain.eq.setGain(band, gain);
    }
    result.chain.bodyMix = std::clamp(result.chain.bodyMix, 0.0, 1.0);
    result.chain.damping = std::clamp(result.chain.damping, 0.0, 1.0);
    result.chain.drive = std::clamp(result.chain.drive, 0.0, 1.0);
    addPartLayers(result.layers, effect, job.stabs);
    return result;
}

std::vector<LayerSpec> heard(const std::vector<LayerSpec>& layers) {
    std::vector<LayerSpec> result;
    std::ranges::copy_if(layers, std::back_inserter(result),
                         [&](const LayerSpec& layer) { return isHeard(layer, layers); });
    return result;
}

} // namespace vornic
