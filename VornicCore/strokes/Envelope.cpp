#include "VornicCore/strokes/Envelope.h"

#include "VornicCore/realtime/IntegerPart.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace vornic {

Envelope envelopeOf(std::span<const float> samples, double sampleRate) {
    Envelope envelope;
    envelope.hop = std::max<std::int64_t>(
        requireIntegerPart(sampleRate * 0.001, "the rate of a recording is out of range"), 1);
    const auto hop = static_cast<std::size_t>(envelope.hop);
    const std::size_t frames = samples.size() / hop;
    envelope.rms.reserve(frames);
    envelope.db.reserve(frames);
    for (std::size_t frame = 0; frame < frames; ++frame) {
        double sum = 0.0;
        for (const float x : samples.subspan(frame * hop, hop)) {
            sum += static_cast<double>(x * x);
        }
        const double rms = std::sqrt(sum / static_cast<double>(hop)) + 1e-9;
        envelope.rms.push_back(rms);
        envelope.db.push_back(20.0 * std::log10(rms));
    }
    return envelope;
}

// Not DSP::Biquad: that moves the corner and adds in another order, which shows in the last bits
// and so, now and then, in which frame is loud enough.
std::vector<float> withoutRumble(std::span<const float> samples, double sampleRate) {
    const double cutoff = std::min(sampleRate * 0.49, 60.0);
    const double w0 = 2.0 * std::numbers::pi * cutoff / sampleRate;
    const double cosine = std::cos(w0);
    const double alpha = std::sin(w0) / 1.414;
    const double a0 = 1.0 + alpha;
    const double b0 = (1.0 + cosine) / 2.0 / a0;
    const double b1 = -(1.0 + cosine) / a0;
    const double b2 = b0;
    const double back1 = 2.0 * cosine / a0;
    const double back2 = (1.0 - alpha) / a0;

    std::vector<float> result(samples.size());
    double z1 = 0.0;
    double z2 = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double x = std::isfinite(samples[i]) ? static_cast<double>(samples[i]) : 0.0;
        const double y = z1 + b0 * x;
        z1 = z2 + b1 * x + back1 * y;
        z2 = b2 * x - back2 * y;
        result[i] = static_cast<float>(y);
    }
    return result;
}

} // namespace vornic
