#pragma once

#include "VornicCore/render/LaneShapeStage.h"
#include "VornicCore/render/LaneVector.h"

#include <cstdint>

// The stages from the mixed-in body to one buffer per lane.
namespace vornic::lanestages {

/// Dry and wet together, of `frames` frames from `first` on; beyond the dry end there is only wet.
/// Thread: any, as everything here.
static inline void mixBody(const LaneFinish& finish, std::int64_t first, std::int64_t frames,
                           double* samples) {
    const Vector gain = load(finish.wetGain);
    std::int64_t dryFrames = 0;
    if (first < finish.frames) {
        const std::int64_t left = finish.frames - first;
        dryFrames = left < frames ? left : frames;
    }
    const std::int64_t place = first * laneCount;
    for (std::int64_t n = 0; n < dryFrames * laneCount; n += laneCount) {
        Vector x = widened(loadFloats(finish.dry + place + n));
        if (finish.body) {
            x += gain * widened(loadFloats(finish.wet + place + n));
        }
        store(x, samples + n);
    }
    for (std::int64_t n = dryFrames * laneCount; n < frames * laneCount; n += laneCount) {
        store(all(0.0) + gain * widened(loadFloats(finish.wet + place + n)), samples + n);
    }
}

struct DampingState {
    Vector low = all(0.0);
    double envelope;
};

static inline void runDamping(const LaneFinish& finish, DampingState& state, std::int64_t first,
                              std::int64_t frames, double* samples) {
    constexpr std::int64_t rampFrames = 96;
    const double move = 1.0 - finish.dampingPole;
    Vector low = state.low;
    double envelope = state.envelope;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        double* const place = samples + frame * laneCount;
        const Vector x = load(place);
        const std::int64_t since = first + frame - finish.dampingStart;
        if (since < 0) {
            low = x;
            continue;
        }
        low += move * (x - low);
        Vector damped = low * envelope;
        envelope *= finish.dampingDecay;
        if (since < rampFrames) {
            const double ramp = static_cast<double>(since) / rampFrames;
            damped = damped * ramp + (1.0 - ramp) * x;
        }
        store(damped, place);
    }
    state = {.low = low, .envelope = envelope};
}

static inline Vector quotient(TanhFraction fraction) {
    return fraction.numerator / fraction.denominator;
}

/// Both samples of the saturation over one common denominator: a division costs more than the rest.
static inline void runDrive(double driveGain, double norm, Vector& previous, std::int64_t frames,
                            double* samples) {
    const double scale = 0.5 / norm;
    Vector before = previous;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        double* const place = samples + frame * laneCount;
        const Vector x = load(place);
        const TanhFraction middle = tanhFraction((before + x) * (0.5 * driveGain));
        const TanhFraction here = tanhFraction(x * driveGain);
        before = x;
        const Vector sum =
            middle.numerator * here.denominator + here.numerator * middle.denominator;
        store(scale * (sum / (middle.denominator * here.denominator)), place);
    }
    previous = before;
}

static inline void partLanes(const double* samples, std::int64_t first, std::int64_t frames,
                             float* const* output) {
    std::int64_t frame = 0;
    for (; frame + 4 <= frames; frame += 4) {
        const double* const from = samples + frame * laneCount;
        const FourFloats lanes =
            transposed(narrowed(load(from)), narrowed(load(from + laneCount)),
                       narrowed(load(from + 2 * laneCount)), narrowed(load(from + 3 * laneCount)));
        const std::int64_t to = first + frame;
        storeFloats(lanes.a, output[0] + to);
        storeFloats(lanes.b, output[1] + to);
        storeFloats(lanes.c, output[2] + to);
        storeFloats(lanes.d, output[3] + to);
    }
    for (; frame < frames; ++frame) {
        for (std::int64_t lane = 0; lane < laneCount; ++lane) {
            output[lane][first + frame] = static_cast<float>(samples[frame * laneCount + lane]);
        }
    }
}

static double tanhStage(double x) {
    return quotient(tanhFraction(all(x)))[0];
}

static void finishStage(const LaneFinish& finish) {
    alignas(64) double samples[blockFrames * laneCount];
    DampingState damping{.envelope = finish.dampingLevel};
    Vector previous = all(0.0);
    const double norm = finish.drive ? tanhStage(finish.driveGain) : 1.0;
    const std::int64_t end = finish.frames + finish.tail;
    for (std::int64_t first = 0; first < end; first += blockFrames) {
        const std::int64_t left = end - first;
        const std::int64_t count = left < blockFrames ? left : blockFrames;
        mixBody(finish, first, count, samples);
        if (finish.damping) {
            runDamping(finish, damping, first, count, samples);
        }
        if (finish.drive) {
            runDrive(finish.driveGain, norm, previous, count, samples);
        }
        partLanes(samples, first, count, finish.output);
    }
}

} // namespace vornic::lanestages
