#include "VornicCore/render/LaneStrokes.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/render/FinishStroke.h"
#include "VornicCore/render/JobLimits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace vornic {

namespace {

constexpr std::size_t index(std::int64_t value) {
    return static_cast<std::size_t>(value);
}

} // namespace

LaneStrokes::LaneStrokes(const RenderJob& job, const SampleSource& library, std::uint64_t seed,
                         const LaneKernels& kernels)
    : LaneStrokes(job, Renderer::effective(*job.stroke(), job), library, seed, kernels) {}

LaneStrokes::LaneStrokes(const RenderJob& job, EffectiveStroke stroke, const SampleSource& library,
                         std::uint64_t seed, const LaneKernels& kernels)
    : job_(job), library_(library), seed_(seed), kernels_(kernels),
      alignAttacks_(job.stroke()->alignAttacks), chain_(std::move(stroke.chain)),
      layers_(heard(stroke.layers)), shared_(sharedSections(chain_)), body_(chain_) {}

const ShiftedLayer* LaneStrokes::shifted(std::size_t layer, std::int64_t variant) {
    const LayerSpec& spec = layers_[layer];
    const std::string* const recording = chosenRecording(spec, variant);
    if (recording == nullptr) {
        return nullptr;
    }
    const auto place = std::pair(layer, index(recording - spec.samples.data()));
    const auto [found, isNew] = shiftedLayers_.try_emplace(place);
    std::optional<ShiftedLayer>& made = found->second;
    if (isNew) {
        made = shiftedLayer(spec, *recording, library_, kernels_);
        keptFrames_ += made ? made->samples.size() : 0;
    }
    return made ? &*made : nullptr;
}

std::vector<float> LaneStrokes::mixOf(std::int64_t variant) {
    // Far more than recordings of keystrokes come to: no board may fill the memory.
    constexpr std::size_t mostKeptFrames = 16'000'000;
    if (keptFrames_ > mostKeptFrames) {
        shiftedLayers_.clear();
        keptFrames_ = 0;
    }
    std::vector<PlacedLayer> placed;
    for (std::size_t layer = 0; layer < layers_.size(); ++layer) {
        if (const ShiftedLayer* const made = shifted(layer, variant)) {
            placed.push_back({.layer = made, .offsetMs = layers_[layer].offsetMs});
        }
    }
    return mixed(placed, alignAttacks_);
}

void LaneStrokes::mix(std::int64_t first, std::int64_t count) {
    first_ = first;
    count_ = count;
    frames_ = 0;
    lengths_ = {};
    std::vector<std::vector<float>> mixes;
    for (std::int64_t lane = 0; lane < count; ++lane) {
        mixes.push_back(mixOf(first + lane));
        lengths_[index(lane)] = std::ssize(mixes.back());
        frames_ = std::max(frames_, lengths_[index(lane)]);
    }
    mixed_.assign(index(frames_ * laneCount), 0.0);
    for (std::size_t lane = 0; lane < mixes.size(); ++lane) {
        double* place = mixed_.data() + lane;
        for (const float sample : mixes[lane]) {
            *place = static_cast<double>(sample);
            place += laneCount;
        }
    }
    kernels_.filter({.sections = shared_.data(),
                     .sectionCount = shared_.size(),
                     .samples = mixed_.data(),
                     .frames = frames_});
    dry_.resize(index(frames_ * laneCount));
    wet_.resize(body_.modes.empty() ? 0 : index((frames_ + body_.tail) * laneCount));
    for (std::vector<float>& lane : parted_) {
        lane.resize(index(frames_ + body_.tail));
    }
}

LaneStrokes::Peaks LaneStrokes::shape(const LaneChains& chains) {
    const std::vector<LaneSection> sections = ownSections(chains);
    LaneShape shape{};
    shape.input = mixed_.data();
    shape.frames = frames_;
    shape.sections = sections.data();
    shape.sectionCount = sections.size();
    for (std::size_t lane = 0; lane < laneCount; ++lane) {
        const ChainParams& chain = chains[lane];
        shape.lengths.lane[lane] = static_cast<double>(lengths_[lane]);
        shape.attack.lane[lane] = DSP::factorOfDecibels(chain.attackDb) - 1;
        shape.sustain.lane[lane] = DSP::factorOfDecibels(chain.sustainDb) - 1;
        shape.transient = shape.transient || chain.attackDb != 0 || chain.sustainDb != 0;
    }
    shape.modes = body_.modes.data();
    shape.modeCount = body_.modes.size();
    shape.tail = body_.tail;
    shape.dry = dry_.data();
    shape.wet = wet_.data();
    kernels_.shape(shape);
    return {shape.dryPeak, shape.wetPeak};
}

void LaneStrokes::finish(const Peaks& peaks) {
    const auto& [dryPeak, wetPeak] = peaks;
    LaneFinish finish{};
    finish.dry = dry_.data();
    finish.frames = frames_;
    finish.wet = wet_.data();
    finish.tail = body_.tail;
    finish.body = !body_.modes.empty();
    ends_ = lengths_;
    for (std::size_t lane = 0; lane < laneCount; ++lane) {
        if (finish.body && dryPeak.lane[lane] > 0) {
            ends_[lane] += body_.tail;
            if (wetPeak.lane[lane] > 0) {
                finish.wetGain.lane[lane] = body_.mix * dryPeak.lane[lane] / wetPeak.lane[lane];
            }
        }
        finish.output[lane] = parted_[lane].data();
    }
    setDampingAndDrive(finish, chain_);
    kernels_.finish(finish);
}

std::vector<std::vector<float>> LaneStrokes::at(Velocity velocity) {
    LaneChains chains;
    chains.fill(chain_);
    std::array<StrokeVariation, index(laneCount)> variations;
    for (std::int64_t lane = 0; lane < count_; ++lane) {
        StrokeVariation& variation = variations[index(lane)];
        variation = StrokeVariation::draw(job_.variation, velocity, first_ + lane, seed_);
        chains[index(lane)] = struck(chain_, velocity, variation);
    }
    finish(shape(chains));
    std::vector<std::vector<float>> strokes;
    for (std::int64_t lane = 0; lane < count_; ++lane) {
        const StrokeVariation& variation = variations[index(lane)];
        strokes.push_back(
            finished(lane, finalPitch(chain_, variation), finalLevelDb(velocity, variation)));
    }
    return strokes;
}

std::vector<float> LaneStrokes::finished(std::int64_t lane, double semitones, double levelDb) {
    const std::span<float> processed(parted_[index(lane)].data(), index(ends_[index(lane)]));
    if (semitones == 0 || processed.size() < 2) {
        return finishedStroke(processed, levelDb, kernels_);
    }
    const double ratio = std::pow(2.0, semitones / 12.0);
    const auto length = static_cast<std::int64_t>(static_cast<double>(processed.size()) / ratio);
    resampled_.resize(std::max(resampled_.size(), index(length)));
    kernels_.resample({.input = processed.data(),
                       .length = std::ssize(processed),
                       .ratio = ratio,
                       .output = resampled_.data(),
                       .outputLength = length});
    return finishedStroke(std::span(resampled_).first(index(length)), levelDb, kernels_);
}

} // namespace vornic
