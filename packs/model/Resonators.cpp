#include "packs/model/Resonators.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace vornic::packs {

namespace {

constexpr double sampleRate = 48000;
constexpr double framesPerMs = 48;

// Written out: the library's product looks for infinities.
std::complex<double> turned(const std::complex<double>& value, const std::complex<double>& step) {
    return {value.real() * step.real() - value.imag() * step.imag(),
            value.real() * step.imag() + value.imag() * step.real()};
}

} // namespace

Drive::Drive(std::size_t length, double hz, std::uint64_t seed)
    : random_(seed), hz_(hz), turn_(2 * std::numbers::pi * hz / sampleRate),
      // No two bands are struck equally softly.
      halfLength_(random_.uniform(0.75, 1.25) * sampleRate / hz),
      // The integral of the windowed sine times the sine, without its ripple.
      norm_(halfLength_ / 2), first_(length), force_(length) {}

void Drive::pulse(double ms, double amplitude) {
    const double begin =
        ms * framesPerMs - std::clamp(halfLength_ - 0.4 * framesPerMs, 0.0, 3.5 * framesPerMs);
    const auto from = static_cast<std::ptrdiff_t>(std::ceil(begin));
    const double start = static_cast<double>(from) - begin - halfLength_;
    // Both the window's and the sine's phase turn by the same angle each sample.
    const double windowTurn = std::numbers::pi / halfLength_;
    const std::complex<double> windowStep = std::polar(1.0, windowTurn);
    const std::complex<double> sineStep = std::polar(1.0, turn_);
    std::complex<double> window = std::polar(1.0, windowTurn * start);
    std::complex<double> sine = amplitude / norm_ * std::polar(1.0, turn_ * start);
    const auto last = static_cast<std::ptrdiff_t>(std::ceil(halfLength_ - start));
    const auto end = std::min(from + last, std::ssize(force_));
    for (std::ptrdiff_t frame = from; frame < end; ++frame) {
        if (frame >= 0) {
            force_[static_cast<std::size_t>(frame)] += (1 + window.real()) / 2 * sine.imag();
        }
        window = turned(window, windowStep);
        sine = turned(sine, sineStep);
    }
    if (end > 0 && from < end) {
        first_ = std::min(first_, static_cast<std::size_t>(std::max(from, std::ptrdiff_t{0})));
        end_ = std::max(end_, static_cast<std::size_t>(end));
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

void Drive::rain(double ms, double energy, double decayMs) {
    // Three drops in the time that a third of an octave resolves.
    const double stepMs = 1000 / (3 * 0.2316 * hz_);
    const double lengthMs = std::min(6 * decayMs, static_cast<double>(force_.size()) / framesPerMs);
    for (double at = 0; at < lengthMs; at += stepMs) {
        const double size = random_.uniform(-1, 1) * std::numbers::sqrt3; // of variance 1
        const double envelope = std::exp(-at / decayMs) * std::sqrt(2 * stepMs / decayMs);
        pulse(ms + at + stepMs * random_.uniform(0, 0.9), size * envelope * std::sqrt(energy));
    }
}

void Drive::rise(double ms, double energy, double overMs) {
    const double stepMs = 1000 / (3 * 0.2316 * hz_);
    for (double at = 0; at < overMs; at += stepMs) {
        const double size = random_.uniform(-1, 1) * std::numbers::sqrt3; // of variance 1
        const double envelope = std::sqrt(2 * at * stepMs) / overMs;
        pulse(ms - overMs + at + stepMs * random_.uniform(0, 0.9),
              size * envelope * std::sqrt(energy));
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
