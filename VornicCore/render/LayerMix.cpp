#include "VornicCore/render/LayerMix.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/realtime/IntegerPart.h"
#include "VornicCore/render/JobLimits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace vornic {

const std::string* chosenRecording(const LayerSpec& layer, std::int64_t variant) {
    if (layer.samples.empty() || variant < 0) {
        return nullptr;
    }
    return &layer.samples[static_cast<std::size_t>(variant) % layer.samples.size()];
}

namespace {

double gainOf(const LayerSpec& layer) {
    return DSP::factorOfDecibels(layer.gainDb) * (layer.invert ? -1 : 1);
}

/// Of a length within bounds.
std::optional<std::vector<float>> recorded(const std::string& recording,
                                           const SampleSource& library) {
    std::optional<std::vector<float>> samples = library.samples(recording);
    if (samples && samples->size() > JobLimits::mostFrames) {
        samples->resize(JobLimits::mostFrames);
        DSP::fadeEnd(*samples);
    }
    return samples;
}

void silenceWhatIsNotFinite(std::vector<float>& samples) {
    for (float& sample : samples) {
        sample = std::isfinite(sample) ? sample : 0.0F;
    }
}

} // namespace

std::optional<ShiftedLayer> shiftedLayer(const LayerSpec& layer, const std::string& recording,
                                         const SampleSource& library) {
    std::optional<std::vector<float>> samples = recorded(recording, library);
    if (!samples) {
        return std::nullopt;
    }
    silenceWhatIsNotFinite(*samples);
    ShiftedLayer shifted{.samples = DSP::resample(*samples, layer.pitch)};
    const double gain = gainOf(layer);
    for (float& sample : shifted.samples) {
        sample = static_cast<float>(static_cast<double>(sample) * gain);
    }
    shifted.onset = DSP::onset(shifted.samples);
    return shifted;
}

std::optional<ShiftedLayer> shiftedLayer(const LayerSpec& layer, const std::string& recording,
                                         const SampleSource& library, const LaneKernels& kernels) {
    std::optional<std::vector<float>> samples = recorded(recording, library);
    if (!samples) {
        return std::nullopt;
    }
    if (!std::isfinite(kernels.peak(samples->data(), std::ssize(*samples)))) {
        silenceWhatIsNotFinite(*samples);
    }
    if (layer.pitch != 0 && samples->size() >= 2) {
        const double ratio = std::pow(2.0, layer.pitch / 12.0);
        std::vector<float> shifted(
            static_cast<std::size_t>(static_cast<double>(samples->size()) / ratio));
        kernels.resample({.input = samples->data(),
                          .length = std::ssize(*samples),
                          .ratio = ratio,
                          .output = shifted.data(),
                          .outputLength = std::ssize(shifted)});
        *samples = std::move(shifted);
    }
    if (const auto gain = static_cast<float>(gainOf(layer)); gain != 1.0F) {
        for (float& sample : *samples) {
            sample *= gain;
        }
    }
    const float threshold = 0.3F * kernels.peak(samples->data(), std::ssize(*samples));
    const auto attack =
        std::ranges::find_if(*samples, [&](float x) { return std::abs(x) >= threshold; });
    const std::int64_t onset = threshold > 0 ? attack - samples->begin() : 0;
    return ShiftedLayer{.samples = *std::move(samples), .onset = onset};
}

std::vector<float> mixed(std::span<const PlacedLayer> layers, bool alignAttacks) {
    // 3 ms, so that an attack has room before it.
    constexpr std::int64_t attackAt = 144;
    constexpr double framesPerMs = 48;
    std::vector<std::int64_t> starts;
    std::int64_t first = std::numeric_limits<std::int64_t>::max();
    for (const PlacedLayer& placed : layers) {
        const std::int64_t attack = alignAttacks ? placed.layer->onset : 0;
        const std::int64_t start =
            attackAt - attack + integerPart(placed.offsetMs * framesPerMs).value_or(0);
        starts.push_back(start);
        first = std::min(first, start);
    }
    std::vector<float> mix;
    bool cut = false;
    for (std::size_t index = 0; index < layers.size(); ++index) {
        const std::vector<float>& samples = layers[index].layer->samples;
        const auto start = static_cast<std::size_t>(starts[index] - first);
        const std::size_t end = std::min(start + samples.size(), JobLimits::mostFrames);
        cut = cut || end < start + samples.size();
        mix.resize(std::max(mix.size(), end));
        for (std::size_t n = start; n < end; ++n) {
            mix[n] += samples[n - start];
        }
    }
    if (cut) {
        DSP::fadeEnd(mix);
    }
    return mix;
}

} // namespace vornic
