#include "VornicCore/strokes/Envelope.h"

#include "VornicCore/realtime/IntegerPart.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace vornic {

namespace {

// The bits of a float that is not negative, read as an integer, are in the order of the floats. The
// upper twelve, the first of which is 0, part the squares into eight steps an octave.
constexpr unsigned stepShift = 20;
constexpr std::size_t stepCount = std::size_t{1} << (31U - stepShift);

std::uint32_t squareBits(float x) {
    return std::bit_cast<std::uint32_t>(x * x);
}

/// The squares of all steps up to the one in which the `wanted` smallest end, in no order: at least
/// `wanted`, and few more.
std::vector<std::uint32_t> smallestSquares(std::span<const float> samples, std::size_t wanted) {
    std::array<std::size_t, stepCount> counts{};
    for (const float x : samples) {
        ++counts[squareBits(x) >> stepShift];
    }
    std::size_t found = 0;
    std::size_t steps = 0;
    while (found < wanted) {
        found += counts[steps++];
    }
    const auto end = static_cast<std::uint32_t>(steps) << stepShift;
    std::vector<std::uint32_t> squares(found + 1);
    std::size_t at = 0;
    // Without a branch: which samples are quiet cannot be foretold. What is not, is overwritten.
    for (const float x : samples) {
        const std::uint32_t square = squareBits(x);
        squares[at] = square;
        at += square < end ? 1 : 0;
    }
    squares.resize(found);
    return squares;
}

/// Sorts by eleven bits at a time, from the lowest.
void sortAscending(std::vector<std::uint32_t>& values) {
    constexpr unsigned digitBits = 11;
    constexpr std::uint32_t digitMask = (1U << digitBits) - 1U;
    std::vector<std::uint32_t> sorted(values.size());
    for (unsigned shift = 0; shift < 32; shift += digitBits) {
        std::array<std::size_t, std::size_t{1} << digitBits> places{};
        for (const std::uint32_t value : values) {
            ++places[(value >> shift) & digitMask];
        }
        std::size_t place = 0;
        for (std::size_t& entry : places) {
            const std::size_t count = entry;
            entry = place;
            place += count;
        }
        for (const std::uint32_t value : values) {
            sorted[places[(value >> shift) & digitMask]++] = value;
        }
        values.swap(sorted);
    }
}

} // namespace

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

double quietestFifthRms(std::span<const float> samples) {
    if (samples.empty()) {
        return 0.0;
    }
    const std::size_t wanted = samples.size() < 10 ? 1 : samples.size() / 5;
    std::vector<std::uint32_t> squares = smallestSquares(samples, wanted);
    sortAscending(squares);
    double sum = 0.0;
    for (const std::uint32_t square : std::span(squares).first(wanted)) {
        sum += static_cast<double>(std::bit_cast<float>(square));
    }
    return std::sqrt(sum / static_cast<double>(wanted));
}

} // namespace vornic
