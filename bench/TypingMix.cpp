#include "bench/TypingMix.h"

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/base/SplitMix64.h"
#include "VornicCore/dsp/DSP.h"
#include "VornicCore/packs/SoundPack.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <stdexcept>

namespace vornic {

namespace {

constexpr double rate = 48000.0;
constexpr std::size_t strike = 1920; // the first 40 ms

double rmsOf(const std::vector<float>& samples, std::size_t count) {
    count = std::min(count, samples.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        sum += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
    }
    return std::sqrt(sum / static_cast<double>(std::max<std::size_t>(count, 1)));
}

/// White noise through a low-pass of first order at 500 Hz, brought to `rms`.
std::vector<float> roomNoise(std::size_t count, double rms, SplitMix64& random) {
    const double keep = std::exp(-2.0 * std::numbers::pi * 500.0 / rate);
    std::vector<float> noise(count);
    double value = 0.0;
    for (float& x : noise) {
        value = keep * value + random.uniform(-1.0, 1.0);
        x = static_cast<float>(value);
    }
    const auto gain = static_cast<float>(rms / rmsOf(noise, count));
    for (float& x : noise) {
        x *= gain;
    }
    return noise;
}

} // namespace

std::vector<std::vector<float>> recordedPresses(const std::filesystem::path& folder) {
    std::vector<std::vector<float>> presses;
    if (const auto pack = SoundPack::load(folder)) {
        for (const auto& [keyClass, files] : pack->files) {
            for (const std::filesystem::path& file : files) {
                if (auto samples = loadAudio(file); samples && samples->size() > strike) {
                    presses.push_back(*std::move(samples));
                }
            }
        }
    }
    if (presses.empty()) {
        throw std::runtime_error("no recordings of keys in " + folder.string());
    }
    return presses;
}

TypingMix mixTyping(const std::vector<std::vector<float>>& presses,
                    const TypingConditions& conditions) {
    SplitMix64 random(conditions.seed);
    std::vector<double> loudness;
    loudness.reserve(presses.size());
    for (const auto& press : presses) {
        loudness.push_back(rmsOf(press, strike));
    }
    std::ranges::nth_element(loudness, loudness.begin() + std::ssize(loudness) / 2);
    const double middle = loudness[loudness.size() / 2];

    const auto count = static_cast<std::size_t>(conditions.seconds * rate);
    TypingMix mix;
    mix.samples = roomNoise(count, middle * std::pow(10.0, -conditions.noiseDb / 20.0), random);
    const double gap = 1.0 / conditions.keysPerSecond;
    for (double time = 0.3; time < conditions.seconds - 0.3;
         time += gap * random.uniform(0.7, 1.3)) {
        const std::vector<float>& press = presses[random.next(presses.size())];
        const auto gain = static_cast<float>(std::pow(10.0, random.uniform(-4.5, 4.5) / 20.0));
        const auto start = static_cast<std::size_t>(time * rate);
        for (std::size_t i = 0; i < press.size() && start + i < count; ++i) {
            mix.samples[start + i] += gain * press[i];
        }
        mix.onsets.push_back(
            static_cast<double>(start + static_cast<std::size_t>(DSP::onset(press))) / rate);
    }
    return mix;
}

} // namespace vornic
