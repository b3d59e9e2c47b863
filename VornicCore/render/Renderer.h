#pragma once

#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/render/EffectiveStroke.h"
#include "VornicCore/render/RenderJob.h"
#include "VornicCore/sampler/Velocity.h"

#include <cstdint>
#include <map>
#include <vector>

/// Turns a stroke into finished sound, mono at 48 kHz, step by step as designed: the measure for
/// the faster way (LaneRenderer). Pure: equal input gives equal bits, in any order.
/// Thread: any, as everything here.
namespace vornic::Renderer {

/// One variation at one velocity. Empty if the sound has no such stroke, or the source supplies
/// none of its layers. Values beyond all reason count as their limits, see JobLimits.h.
std::vector<float> render(const RenderJob& job, Velocity velocity, std::int64_t variant,
                          const SampleSource& library, std::uint64_t seed);

/// The variations of every velocity.
using Variations = std::map<Velocity, std::vector<std::vector<float>>>;

/// As many variations as the sound asks for, at every velocity.
Variations renderAll(const RenderJob& job, const SampleSource& library, std::uint64_t seed);

} // namespace vornic::Renderer
