#pragma once

#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/render/EffectiveStroke.h"
#include "VornicCore/render/LaneChain.h"
#include "VornicCore/render/LaneKernels.h"
#include "VornicCore/render/LayerMix.h"
#include "VornicCore/render/StrokeVariation.h"
#include "VornicCore/sampler/Velocity.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace vornic {

/// Renders the strokes of one job, up to `laneCount` variants at a time: first their mix, which all
/// velocities share, then each velocity. Keeps its buffers from call to call. Thread: any.
class LaneStrokes {
  public:
    /// `job`, within its limits and with a stroke, and the other references must outlive this.
    LaneStrokes(const RenderJob& job, const SampleSource& library, std::uint64_t seed,
                const LaneKernels& kernels);

    /// Mixes the layers of `count` variants from `first` on, and runs what their strokes share.
    void mix(std::int64_t first, std::int64_t count);

    /// The mixed variants, rendered at `velocity`.
    std::vector<std::vector<float>> at(Velocity velocity);

  private:
    LaneStrokes(const RenderJob& job, EffectiveStroke stroke, const SampleSource& library,
                std::uint64_t seed, const LaneKernels& kernels);

    using Lengths = std::array<std::int64_t, static_cast<std::size_t>(laneCount)>;
    using Peaks = std::pair<Lanes, Lanes>; // dry and wet

    const ShiftedLayer* shifted(std::size_t layer, std::int64_t variant);
    std::vector<float> mixOf(std::int64_t variant);
    Peaks shape(const LaneChains& chains);
    void finish(const Peaks& peaks);
    std::vector<float> finished(std::int64_t lane, double semitones, double levelDb);

    const RenderJob& job_;
    const SampleSource& library_;
    std::uint64_t seed_;
    const LaneKernels& kernels_;

    bool alignAttacks_;
    ChainParams chain_;
    std::vector<LayerSpec> layers_;
    std::vector<LaneSection> shared_;
    LaneBody body_;
    // By layer and index of the recording in it.
    std::map<std::pair<std::size_t, std::size_t>, std::optional<ShiftedLayer>> shiftedLayers_;
    std::size_t keptFrames_ = 0; // in these

    std::int64_t first_ = 0;
    std::int64_t count_ = 0;
    std::int64_t frames_ = 0; // of the longest lane
    Lengths lengths_{};
    Lengths ends_{}; // with the body's tail

    std::vector<double> mixed_;    // interleaved
    std::vector<float> dry_, wet_; // interleaved
    std::array<std::vector<float>, static_cast<std::size_t>(laneCount)> parted_;
    std::vector<float> resampled_;
};

} // namespace vornic
