#include "VornicCore/render/FinishStroke.h"

#include "VornicCore/dsp/DSP.h"
#include "VornicCore/render/JobLimits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vornic {

namespace {

constexpr std::size_t beforeAttack = 48; // 1 ms

} // namespace

double finalPitch(const ChainParams& chain, const StrokeVariation& variation) {
    // Parts and character add to a pitch that is within its limit.
    return std::clamp(chain.pitch + variation.pitch, -JobLimits::pitch, JobLimits::pitch);
}

void finishStroke(std::vector<float>& samples, double levelDb) {
    const auto onset = static_cast<std::size_t>(DSP::onset(samples));
    const auto silence = static_cast<std::ptrdiff_t>(onset - std::min(onset, beforeAttack));
    samples.erase(samples.begin(), samples.begin() + silence);
    // Before the fade, or a stroke that is too long would end in a hard edge.
    samples.resize(std::min(samples.size(), JobLimits::mostStrokeFrames));
    DSP::trimTail(samples, trimFloorDb);
    DSP::level(samples, strokeTargetDb, strokeCeilingDb);
    const double gain = DSP::factorOfDecibels(levelDb);
    for (float& sample : samples) {
        sample = static_cast<float>(static_cast<double>(sample) * gain);
    }
    if (!std::ranges::all_of(samples, [](float sample) { return std::isfinite(sample); })) {
        samples.clear();
    }
}

namespace {

std::span<float> fromAttack(std::span<float> samples, float peak) {
    const float threshold = 0.3F * peak;
    const auto attack =
        std::ranges::find_if(samples, [&](float x) { return std::abs(x) >= threshold; });
    const auto onset = static_cast<std::size_t>(attack - samples.begin());
    return samples.subspan(onset - std::min(onset, beforeAttack));
}

std::span<float> withoutTail(std::span<float> samples, float peak) {
    constexpr std::size_t fadeFrames = 192;
    const float threshold = peak * static_cast<float>(std::pow(10.0, trimFloorDb / 20.0));
    std::size_t kept = samples.size();
    while (kept > 0 && !(std::abs(samples[kept - 1]) > threshold)) {
        --kept;
    }
    if (kept == 0) {
        return {};
    }
    const auto trimmed = samples.first(std::min(samples.size(), kept - 1 + fadeFrames));
    DSP::fadeEnd(trimmed);
    return trimmed;
}

double levelGain(std::span<const float> samples, double peak) {
    constexpr std::size_t strikeFrames = 1920;
    const auto strike = samples.first(std::min(samples.size(), strikeFrames));
    double sum = 0;
    for (const float sample : strike) {
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    }
    const double rms = std::sqrt(sum / static_cast<double>(strike.size()));
    if (!(rms > 1e-7)) {
        return 1;
    }
    return std::min(DSP::factorOfDecibels(strokeTargetDb) / rms,
                    DSP::factorOfDecibels(strokeCeilingDb) / peak);
}

} // namespace

std::vector<float> finishedStroke(std::span<float> samples, double levelDb,
                                  const LaneKernels& kernels) {
    const float peak = kernels.peak(samples.data(), std::ssize(samples));
    if (!std::isfinite(peak) || peak == 0) {
        return {};
    }
    const std::span<float> struck = fromAttack(samples, peak);
    const auto within = struck.first(std::min(struck.size(), JobLimits::mostStrokeFrames));
    const float peakWithin =
        within.size() == struck.size() ? peak : kernels.peak(within.data(), std::ssize(within));
    const std::span<float> kept = withoutTail(within, peakWithin);
    const float keptPeak = kernels.peak(kept.data(), std::ssize(kept));
    const auto gain = static_cast<float>(levelGain(kept, static_cast<double>(keptPeak)) *
                                         DSP::factorOfDecibels(levelDb));
    std::vector<float> result(kept.size());
    std::ranges::transform(kept, result.begin(), [&](float sample) { return sample * gain; });
    return result;
}

} // namespace vornic
