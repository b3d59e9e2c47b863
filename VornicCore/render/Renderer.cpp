#include "VornicCore/render/Renderer.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/dsp/Tone.h"
#include "VornicCore/parts/Parts.h"
#include "VornicCore/render/FinishStroke.h"
#include "VornicCore/render/JobLimits.h"
#include "VornicCore/render/LayerMix.h"
#include "VornicCore/render/PartSamples.h"
#include "VornicCore/render/StrokeVariation.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace vornic::Renderer {

namespace {

/// `render` of a job within its limits.
std::vector<float> renderLimited(const RenderJob& job, Velocity velocity, std::int64_t variant,
                                 const SampleSource& library, std::uint64_t seed) {
    const StrokeSpec* const stroke = job.stroke();
    if (stroke == nullptr) {
        return {};
    }
    const EffectiveStroke effect = effective(*stroke, job);
    const StrokeVariation variation = StrokeVariation::draw(job.variation, velocity, variant, seed);

    const std::vector<LayerSpec> playing = heard(effect.layers);
    std::vector<ShiftedLayer> shifted;
    shifted.reserve(playing.size()); // the placed layers point into it
    std::vector<PlacedLayer> placed;
    for (const LayerSpec& layer : playing) {
        const std::string* const recording = chosenRecording(layer, variant);
        if (recording == nullptr) {
            continue;
        }
        if (auto made = shiftedLayer(layer, *recording, library)) {
            shifted.push_back(*std::move(made));
            placed.push_back({.layer = &shifted.back(), .offsetMs = layer.offsetMs});
        }
    }
    std::vector<float> samples = mixed(placed, stroke->alignAttacks);

    const ChainParams chain = struck(effect.chain, velocity, variation);
    DSP::tone(samples, chain.eq, chain.highPassHz, chain.lowPassHz);
    DSP::transient(samples, chain.attackDb, chain.sustainDb);
    DSP::body(samples, chain.bodyModes, chain.bodyMix);
    DSP::damping(samples, chain.damping, chain.dampingStartMs);
    DSP::drive(samples, chain.drive);
    samples = DSP::resample(samples, finalPitch(chain, variation));
    finishStroke(samples, finalLevelDb(velocity, variation));
    return samples;
}

} // namespace

std::vector<float> render(const RenderJob& job, Velocity velocity, std::int64_t variant,
                          const SampleSource& library, std::uint64_t seed) {
    return renderLimited(limited(job).job, velocity, variant, library, seed);
}

Variations renderAll(const RenderJob& job, const SampleSource& library, std::uint64_t seed) {
    const RenderJob within = limited(job).job;
    Variations result;
    for (const Velocity velocity : allVelocities) {
        std::vector<std::vector<float>>& variations = result[velocity];
        for (std::int64_t variant = 0; variant < within.sound.variations; ++variant) {
            variations.push_back(renderLimited(within, velocity, variant, library, seed));
        }
    }
    return result;
}

} // namespace vornic::Renderer
