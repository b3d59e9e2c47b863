#include "packs/recorded/StrokeVariant.h"

#include "VornicCore/base/SplitMix64.h"
#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/dsp/DSP.h"

#include "packs/recorded/StrokeShape.h"

#include <algorithm>
#include <cmath>

namespace vornic::packs {

namespace {

constexpr std::size_t attack = 9 * millisecond; // the cut's lead of 1 ms included
constexpr std::size_t seam = 3 * millisecond;

void colour(std::vector<float>& stroke, SplitMix64& random) {
    for (const double hz : {350.0, 700.0, 1400.0, 2800.0, 5600.0, 9500.0}) {
        const double centre = hz * random.uniform(0.8, 1.25);
        DSP::Biquad(DSP::Biquad::Kind::peak, centre, 1.2, random.uniform(-3, 3)).run(stroke);
    }
}

// Ends the attack early or late, with a cross-fade where the stroke goes on.
std::vector<float> retimed(const std::vector<float>& stroke, SplitMix64& random) {
    constexpr std::size_t most = 5 * millisecond / 2;
    const std::size_t skipped = random.next(2 * most + 1); // by `most` is not at all
    const auto gain = static_cast<float>(std::pow(10, random.uniform(-3, 3) / 20));
    std::vector<float> result(stroke.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        const std::size_t from = i + skipped;
        const float later = from >= most && from - most < stroke.size() ? stroke[from - most] : 0;
        const double phase = std::clamp((static_cast<double>(i) - static_cast<double>(attack)) /
                                            static_cast<double>(seam),
                                        0.0, 1.0);
        const auto part = static_cast<float>(phase);
        result[i] = stroke[i] * (1 - part) + later * gain * part;
    }
    return result;
}

} // namespace

std::vector<float> variantOf(std::span<const float> stroke, std::uint64_t seed) {
    SplitMix64 random(seed);
    std::vector<float> result(stroke.begin(), stroke.end());
    if (result.size() < attack + seam) {
        return result;
    }
    const float last = result.back();
    result = retimed(result, random);
    result = DSP::resample(result, random.uniform(-0.4, 0.4));
    result.resize(stroke.size(), last);
    colour(result, random);
    // Where it was longer than the recording, it would end with a step.
    constexpr std::size_t fade = 10 * millisecond;
    for (std::size_t i = 0; i < fade && i < result.size(); ++i) {
        result[result.size() - 1 - i] *= static_cast<float>(i) / static_cast<float>(fade);
    }
    return result;
}

} // namespace vornic::packs
