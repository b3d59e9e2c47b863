#include "packs/model/Resonators.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vornic::packs {

namespace {

constexpr double sampleRate = 48000;
constexpr double framesPerMs = 48;

} // namespace

Drive::Drive(std::size_t length, double hz, std::uint64_t seed)
    : turn_(2 * std::numbers::pi * hz / sampleRate), halfLength_(0.9 * sampleRate / hz),
      // The integral of the windowed sine times the sine, without its ripple.
      norm_(halfLength_ / 2), random_(seed), first_(length), force_(length) {}

void Drive::pulse(double ms, double amplitude) {
    const auto from = static_cast<std::ptrdiff_t>(std::ceil(ms * framesPerMs));
    const double offset = static_cast<double>(from) - ms * framesPerMs;
    for (std::ptrdiff_t i = 0; static_cast<double>(i) + offset < 2 * halfLength_; ++i) {
        const double at = static_cast<double>(i) + offset - halfLength_;
        const double window = (1 + std::cos(std::numbers::pi * at / halfLength_)) / 2;
        const std::ptrdiff_t frame = from + i;
        if (frame >= 0 && frame < std::ssize(force_)) {
            const auto index = static_cast<std::size_t>(frame);
            force_[index] += amplitude * window * std::sin(turn_ * at) / norm_;
            first_ = std::min(first_, index);
            end_ = std::max(end_, index + 1);
        }
    }
}

void Drive::strike(double ms, double energy, double contactMs) {
    constexpr int contacts = 4;
    double left = 1;
    double at = ms;
    for (int i = 0; i < contacts; ++i) {
        const double part = i + 1 == contacts ? left : left * random_.uniform(0.5, 0.8);
        pulse(at, std::sqrt(energy * part) * (random_.next(4) == 0 ? -1 : 1));
        left -= part;
        at += contactMs * random_.uniform(0.15, 0.6);
    }
}

void Drive::spread(double ms, double energy, double overMs) {
    constexpr int returns = 10;
    for (int i = 0; i < returns; ++i) {
        const double sign = random_.next(2) == 0 ? -1 : 1;
        pulse(ms + overMs * (i + random_.uniform(0, 1)) / returns,
              sign * std::sqrt(energy / returns));
    }
}

void ring(const Drive& drive, double hz, double decayMs, double energy, double sign,
          std::vector<double>& samples) {
    const double decay = std::max(decayMs, 0.15) * framesPerMs;
    const double turn = 2 * std::numbers::pi * std::min(hz, 20000.0) / sampleRate;
    const double radius = std::exp(-1 / decay);
    const double forward = 2 * radius * std::cos(turn);
    const double back = radius * radius;
    // The response to a unit pulse is radius^n sin((n + 1) turn) / sin(turn): its energy is about
    // decay / 4 / sin(turn)^2.
    const double gain = sign * std::sin(turn) * std::sqrt(4 * energy / decay);
    const std::vector<double>& force = drive.force();
    double y1 = 0;
    double y2 = 0;
    // 95 dB below its start a resonance is no more than the 16 bits of a file hold.
    const std::size_t end =
        std::min(samples.size(), drive.end() + static_cast<std::size_t>(11 * decay));
    for (std::size_t i = drive.first(); i < end; ++i) {
        const double y = forward * y1 - back * y2 + gain * force[i];
        y2 = y1;
        y1 = y;
        samples[i] += y;
    }
}

} // namespace vornic::packs
