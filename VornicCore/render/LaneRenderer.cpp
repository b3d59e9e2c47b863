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

Renderer::Variations renderSome(const RenderJob& job, std::span<const Velocity> velocities,
                                Range range, const SampleSource& library, std::uint64_t seed,
                                const LaneKernels& kernels) {
    const RenderJob within = limited(job).job;
    const std::int64_t end = std::min(range.end, within.sound.variations);
    Renderer::Variations result;
    for (const Velocity velocity : velocities) {
        result[velocity].resize(
            static_cast<std::size_t>(std::max<std::int64_t>(end - range.first, 0)));
    }
    if (within.stroke() == nullptr) {
        return result;
    }
    const ScopedFlushDenormals flush;
    LaneStrokes strokes(within, library, seed, kernels);
    for (std::int64_t first = range.first; first < end; first += laneCount) {
        strokes.mix(first, std::min(laneCount, end - first));
        for (auto& [velocity, variations] : result) {
            std::ranges::move(strokes.at(velocity), variations.begin() + (first - range.first));
        }
    }
    return result;
}

Renderer::Variations renderAll(const RenderJob& job, const SampleSource& library,
                               std::uint64_t seed, const LaneKernels& kernels) {
    return renderSome(job, allVelocities, {.first = 0, .end = JobLimits::mostVariations}, library,
                      seed, kernels);
}

} // namespace vornic::LaneRenderer
