#include "VornicCore/render/LaneRenderer.h"

#include "VornicCore/realtime/ScopedFlushDenormals.h"
#include "VornicCore/render/JobLimits.h"
#include "VornicCore/render/LaneStrokes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace vornic::LaneRenderer {

std::vector<float> render(const RenderJob& job, Velocity velocity, std::int64_t variant,
                          const SampleSource& library, std::uint64_t seed,
                          const LaneKernels& kernels) {
    const RenderJob within = limited(job).job;
    if (within.stroke() == nullptr) {
        return {};
    }
    const ScopedFlushDenormals flush;
    LaneStrokes strokes(within, library, seed, kernels);
    strokes.mix(variant, 1);
    return std::move(strokes.at(velocity).front());
}

Renderer::Variations renderAll(const RenderJob& job, std::span<const Velocity> velocities,
                               const SampleSource& library, std::uint64_t seed,
                               const LaneKernels& kernels) {
    const RenderJob within = limited(job).job;
    Renderer::Variations result;
    for (const Velocity velocity : velocities) {
        result[velocity].resize(static_cast<std::size_t>(within.sound.variations));
    }
    if (within.stroke() == nullptr) {
        return result;
    }
    const ScopedFlushDenormals flush;
    LaneStrokes strokes(within, library, seed, kernels);
    for (std::int64_t first = 0; first < within.sound.variations; first += laneCount) {
        strokes.mix(first, std::min(laneCount, within.sound.variations - first));
        for (auto& [velocity, variations] : result) {
            std::ranges::move(strokes.at(velocity), variations.begin() + first);
        }
    }
    return result;
}

Renderer::Variations renderAll(const RenderJob& job, const SampleSource& library,
                               std::uint64_t seed) {
    return renderAll(job, allVelocities, library, seed);
}

} // namespace vornic::LaneRenderer
