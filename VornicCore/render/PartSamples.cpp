#include "VornicCore/render/PartSamples.h"

#include "VornicCore/base/SampleRate.h"
#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/realtime/IntegerPart.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vornic::PartSamples {

namespace {

std::vector<float> filtered(std::span<const float> from, DSP::Biquad::Kind kind, double frequency,
                            double q) {
    std::vector<float> samples(from.begin(), from.end());
    DSP::Biquad(kind, frequency, q, 0, DSP::sampleRate).run(samples);
    return samples;
}

} // namespace

std::vector<float> click(std::span<const float> from) {
    return gate(filtered(from, DSP::Biquad::Kind::highPass, 2000, 0.8), 20);
}

std::vector<float> spring(std::span<const float> from) {
    constexpr std::size_t strike = 192;
    const auto ringing = from.subspan(std::min(strike, from.size()));
    return gate(filtered(ringing, DSP::Biquad::Kind::bandPass, 3200, 1.5), 70);
}

std::vector<float> rattle(std::span<const float> from) {
    return gate(filtered(from, DSP::Biquad::Kind::highPass, 2500, 0.8), 35);
}

std::vector<float> gate(std::span<const float> samples, double ms) {
    constexpr double framesPerMs = 48;
    constexpr std::int64_t longestFade = 288;
    const auto available = static_cast<std::int64_t>(samples.size());
    // A length beyond every integer keeps all; one that is no number keeps nothing.
    const std::int64_t wanted = integerPart(ms * framesPerMs).value_or(ms > 0 ? available : 0);
    const std::int64_t count = std::clamp<std::int64_t>(wanted, 0, available);
    std::vector<float> kept(samples.begin(), samples.begin() + count);

    const std::int64_t fade = std::min(count / 2, longestFade);
    for (std::int64_t j = 0; j < fade; ++j) {
        kept[static_cast<std::size_t>(count - 1 - j)] *=
            static_cast<float>(j) / static_cast<float>(fade);
    }
    if (const float peak = DSP::peak(kept); peak > 0) {
        constexpr float wantedPeak = 0.5F;
        for (float& sample : kept) {
            // Not times wantedPeak / peak, which is infinite for the faintest peaks.
            sample = sample / peak * wantedPeak;
        }
    }
    return kept;
}

} // namespace vornic::PartSamples
