#include "packs/recorded/StrokeShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace vornic::packs {

namespace {

constexpr double sampleRate = 48000;
constexpr std::size_t lead = millisecond;
constexpr std::size_t longestStroke = 260 * millisecond;
constexpr std::size_t fadeIn = millisecond / 2;
constexpr std::size_t stepFade = millisecond / 8;
constexpr std::size_t fadeOut = 40 * millisecond;
constexpr double eventRange = 0.1; // 20 dB below the loudest millisecond
constexpr std::size_t gap = 3;     // milliseconds

// RMS of each whole millisecond.
std::vector<double> levels(std::span<const float> samples) {
    std::vector<double> result;
    for (std::size_t at = 0; at + millisecond <= samples.size(); at += millisecond) {
        result.push_back(rms(samples.subspan(at, millisecond)));
    }
    return result;
}

std::size_t loudest(const std::vector<double>& level) {
    return static_cast<std::size_t>(std::ranges::max_element(level) - level.begin());
}

// The millisecond in which the event around the loudest one begins.
std::size_t mainEventStart(const std::vector<double>& level) {
    const std::size_t top = loudest(level);
    std::size_t start = top;
    for (std::size_t back = 1; back <= top && start - (top - back) <= gap; ++back) {
        if (level[top - back] > level[top] * eventRange) {
            start = top - back;
        }
    }
    return start;
}

std::size_t firstEventStart(const std::vector<double>& level) {
    const double least = level[loudest(level)] * eventRange;
    const auto first = std::ranges::find_if(level, [&](double value) { return value > least; });
    return static_cast<std::size_t>(first - level.begin());
}

// R. Bristow-Johnson, "Cookbook formulae for audio EQ biquad filter coefficients".
void highPass(std::vector<float>& samples, double frequency, double q) {
    const double w = 2 * std::numbers::pi * frequency / sampleRate;
    const double alpha = std::sin(w) / (2 * q);
    const double a0 = 1 + alpha;
    const double b0 = (1 + std::cos(w)) / 2 / a0;
    const double a1 = -2 * std::cos(w) / a0;
    const double a2 = (1 - alpha) / a0;
    double z1 = 0;
    double z2 = 0;
    for (float& sample : samples) {
        const auto x = static_cast<double>(sample);
        const double y = b0 * x + z1;
        z1 = -2 * b0 * x - a1 * y + z2;
        z2 = b0 * x - a2 * y;
        sample = static_cast<float>(y);
    }
}

} // namespace

double decibels(double amplitude) {
    return 20 * std::log10(std::max(amplitude, 1e-10));
}

double rms(std::span<const float> samples) {
    if (samples.empty()) {
        return 0;
    }
    const double sum =
        std::transform_reduce(samples.begin(), samples.end(), 0.0, std::plus(), [](float x) {
            return static_cast<double>(x) * static_cast<double>(x);
        });
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

float peak(std::span<const float> samples) {
    return std::transform_reduce(
        samples.begin(), samples.end(), 0.0F, [](float a, float b) { return std::max(a, b); },
        [](float x) { return std::abs(x); });
}

double strokeLevel(std::span<const float> samples) {
    return decibels(rms(samples.first(std::min(samples.size(), 40 * millisecond))));
}

std::size_t strokeOnset(std::span<const float> samples, Stroke stroke) {
    const std::vector<double> level = levels(samples);
    if (level.empty() || level[loudest(level)] <= 0) {
        return 0;
    }
    const std::size_t start =
        stroke == Stroke::press ? mainEventStart(level) : firstEventStart(level);
    // The attack may begin at the end of the millisecond before.
    const std::size_t from = (start == 0 ? 0 : start - 1) * millisecond;
    const std::span<const float> around = samples.subspan(from, (start + 1) * millisecond - from);
    const float least = peak(around.last(millisecond)) / 4;
    const auto attack = std::ranges::find_if(around, [&](float x) { return std::abs(x) >= least; });
    return from + static_cast<std::size_t>(attack - around.begin());
}

bool isClipped(std::span<const float> samples) {
    constexpr float full = 0.999F;
    std::size_t run = 0;
    float former = 0;
    for (const float x : samples) {
        if (std::abs(x) < full) {
            run = 0;
        } else {
            run = x * former > 0 ? run + 1 : 1;
        }
        if (run == 3) {
            return true;
        }
        former = x;
    }
    return false;
}

bool holdsSecondStroke(std::span<const float> samples) {
    const std::vector<double> level = levels(samples);
    if (level.empty()) {
        return false;
    }
    const std::size_t top = loudest(level);
    const double least = level[top] * 0.2; // 14 dB
    return std::ranges::any_of(level.begin() +
                                   static_cast<std::ptrdiff_t>(std::min(level.size(), top + 100)),
                               level.end(), [&](double value) { return value > least; });
}

void removeRumble(std::vector<float>& samples) {
    if (samples.empty()) {
        return;
    }
    const double mean =
        std::accumulate(samples.begin(), samples.end(), 0.0) / static_cast<double>(samples.size());
    for (float& sample : samples) {
        sample = static_cast<float>(static_cast<double>(sample) - mean);
    }
    // The two sections of a fourth-order Butterworth filter.
    highPass(samples, 60, 0.541196);
    highPass(samples, 60, 1.306563);
}

std::vector<float> cutStroke(std::span<const float> samples, std::size_t onset) {
    const std::size_t start = onset > lead ? onset - lead : 0;
    const std::size_t length = std::min(samples.size() - start, longestStroke);
    const std::span<const float> cut = samples.subspan(start, length);
    std::vector<float> stroke(cut.begin(), cut.end());
    // Never into the attack itself; where the recording begins within it, just enough to begin
    // without a step.
    const std::size_t in = std::min(std::clamp(onset - start, stepFade, fadeIn), length);
    for (std::size_t i = 0; i < in; ++i) {
        stroke[i] *= static_cast<float>(i) / static_cast<float>(in);
    }
    const std::size_t out = std::min(fadeOut, length / 2);
    for (std::size_t i = 0; i < out; ++i) {
        const double phase = std::numbers::pi * static_cast<double>(i) / static_cast<double>(out);
        stroke[length - 1 - i] *= static_cast<float>((1 - std::cos(phase)) / 2);
    }
    return stroke;
}

} // namespace vornic::packs
