#pragma once

#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/render/LaneKernels.h"
#include "VornicCore/render/RenderJob.h"
#include "VornicCore/render/Renderer.h"
#include "VornicCore/sampler/Velocity.h"

#include <cstdint>
#include <span>
#include <vector>

/// The fast renderer: what depends on the recordings only is made once per job, and variations are
/// processed side by side. It differs from Renderer by less than -100 dB of the peak. A stroke
/// comes out the same to the bit whether rendered alone or with others, on any thread of one
/// machine. Thread: any.
namespace vornic::LaneRenderer {

/// One variation at one velocity, as Renderer::render.
std::vector<float> render(const RenderJob& job, Velocity velocity, std::int64_t variant,
                          const SampleSource& library, std::uint64_t seed,
                          const LaneKernels& kernels = laneKernels());

/// Some of a job's variations: those from `first` on, and before `end`.
struct Range {
    std::int64_t first = 0;
    std::int64_t end = 0;
};

/// These of the variations that the sound asks for, at each of `velocities`.
Renderer::Variations renderSome(const RenderJob& job, std::span<const Velocity> velocities,
                                Range range, const SampleSource& library, std::uint64_t seed,
                                const LaneKernels& kernels = laneKernels());

/// As many variations as the sound asks for, at every velocity, as Renderer::renderAll.
Renderer::Variations renderAll(const RenderJob& job, const SampleSource& library,
                               std::uint64_t seed, const LaneKernels& kernels = laneKernels());

} // namespace vornic::LaneRenderer
