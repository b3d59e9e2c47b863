#pragma once

#include "VornicCore/render/LaneVector.h"

#include <cstddef>
#include <cstdint>

// The stages up to the wet body. All run in blocks that stay in the nearest cache.
// Thread: any, as everything here.
namespace vornic::lanestages {

constexpr std::int64_t blockFrames = 128;
// As many recursions as keep their state in registers; they hide one another's latency.
constexpr std::size_t atOnce = 4;

struct SectionState {
    Vector z1, z2;
};

template <std::size_t Count>
static inline void runSections(const LaneSection* sections, SectionState* states, double* samples,
                               std::int64_t frames) {
    SectionState state[Count];
    Vector b0[Count], b1[Count], b2[Count], a1[Count], a2[Count];
    for (std::size_t s = 0; s < Count; ++s) {
        state[s] = states[s];
        b0[s] = load(sections[s].b0);
        b1[s] = load(sections[s].b1);
        b2[s] = load(sections[s].b2);
        a1[s] = load(sections[s].a1);
        a2[s] = load(sections[s].a2);
    }
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        double* const place = samples + frame * laneCount;
        Vector x = load(place);
#pragma GCC unroll 4
        for (std::size_t s = 0; s < Count; ++s) {
            const Vector y = b0[s] * x + state[s].z1;
            state[s].z1 = (b1[s] * x + state[s].z2) - a1[s] * y;
            state[s].z2 = b2[s] * x - a2[s] * y;
            x = y;
        }
        store(x, place);
    }
    for (std::size_t s = 0; s < Count; ++s) {
        states[s] = state[s];
    }
}

static inline void runCascade(const LaneSection* sections, SectionState* states, std::size_t count,
                              double* samples, std::int64_t frames) {
    while (count >= atOnce) {
        runSections<atOnce>(sections, states, samples, frames);
        sections += atOnce;
        states += atOnce;
        count -= atOnce;
    }
    switch (count) {
    case 3:
        runSections<3>(sections, states, samples, frames);
        break;
    case 2:
        runSections<2>(sections, states, samples, frames);
        break;
    case 1:
        runSections<1>(sections, states, samples, frames);
        break;
    default:
        break;
    }
}

struct Followers {
    Vector fast = all(0.0), slow = all(0.0);
};

/// 1 - exp(-1 / (ms x 48)): the share of the way that a follower goes in one frame.
struct FollowerSpeed {
    double rising, falling;
};
constexpr FollowerSpeed fastSpeed{.rising = 0.0408105428908618118,
                                  .falling = 0.00104112432027550922};
constexpr FollowerSpeed slowSpeed{.rising = 0.00138792482909168266,
                                  .falling = 0.00034716194756285533};

static inline Vector followed(Vector envelope, Vector level, FollowerSpeed speed) {
    // Of both directions the right one is the larger: rising is the faster of the two.
    return larger(envelope * (1.0 - speed.rising) + level * speed.rising,
                  envelope * (1.0 - speed.falling) + level * speed.falling);
}

static inline void runTransient(Followers& followers, Vector attackGain, Vector sustainGain,
                                double* samples, std::int64_t frames) {
    const Vector zero = all(0.0);
    Vector fast = followers.fast;
    Vector slow = followers.slow;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        double* const place = samples + frame * laneCount;
        const Vector x = load(place);
        const Vector level = magnitude(x);
        fast = followed(fast, level, fastSpeed);
        slow = followed(slow, level, slowSpeed);
        const Vector most = larger(larger(fast, slow), all(1e-9));
        const Vector lead = fast - slow;
        const Vector change = attackGain * larger(lead, zero) + sustainGain * larger(-lead, zero);
        store(x + x * (change / most), place);
    }
    followers = {.fast = fast, .slow = slow};
}

/// Silences what lies beyond a lane's own end, keeps the peak, and stores the dry signal.
static inline Vector keepDry(double* samples, std::int64_t first, std::int64_t frames,
                             Vector lengths, Vector peak, float* dry) {
    Vector index = all(static_cast<double>(first));
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        double* const place = samples + frame * laneCount;
        const Integers within = index < lengths;
        const auto x = reinterpret_cast<Vector>(reinterpret_cast<Integers>(load(place)) & within);
        index += 1.0;
        store(x, place);
        peak = larger(peak, magnitude(x));
        storeFloats(narrowed(x), dry + frame * laneCount);
    }
    return peak;
}

struct ModeState {
    Vector y1, y2;
};

template <std::size_t Count>
static inline void runModes(const LaneMode* modes, ModeState* states, const double* samples,
                            double* wet, std::int64_t frames) {
    ModeState state[Count];
    Vector feedback1[Count], feedback2[Count], gain[Count];
    for (std::size_t m = 0; m < Count; ++m) {
        state[m] = states[m];
        feedback1[m] = all(modes[m].feedback1);
        feedback2[m] = all(modes[m].feedback2);
        gain[m] = all(modes[m].gain);
    }
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const std::int64_t place = frame * laneCount;
        const Vector x = load(samples + place);
        Vector sum = load(wet + place);
#pragma GCC unroll 4
        for (std::size_t m = 0; m < Count; ++m) {
            const Vector forced = gain[m] * x - feedback2[m] * state[m].y2;
            const Vector y = feedback1[m] * state[m].y1 + forced;
            state[m] = {y, state[m].y1};
            sum += y;
        }
        store(sum, wet + place);
    }
    for (std::size_t m = 0; m < Count; ++m) {
        states[m] = state[m];
    }
}

static inline void runBody(const LaneMode* modes, ModeState* states, std::size_t count,
                           const double* samples, double* wet, std::int64_t frames) {
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        store(all(0.0), wet + frame * laneCount);
    }
    while (count >= atOnce) {
        runModes<atOnce>(modes, states, samples, wet, frames);
        modes += atOnce;
        states += atOnce;
        count -= atOnce;
    }
    switch (count) {
    case 3:
        runModes<3>(modes, states, samples, wet, frames);
        break;
    case 2:
        runModes<2>(modes, states, samples, wet, frames);
        break;
    case 1:
        runModes<1>(modes, states, samples, wet, frames);
        break;
    default:
        break;
    }
}

/// Stores the wet signal; its peak counts up to each lane's own end only.
static inline Vector keepWet(const double* samples, std::int64_t first, std::int64_t frames,
                             Vector ends, Vector peak, float* wet) {
    Vector index = all(static_cast<double>(first));
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const Vector y = load(samples + frame * laneCount);
        const Integers within = index < ends;
        index += 1.0;
        peak = larger(peak,
                      magnitude(reinterpret_cast<Vector>(reinterpret_cast<Integers>(y) & within)));
        storeFloats(narrowed(y), wet + frame * laneCount);
    }
    return peak;
}

constexpr std::size_t mostSections = 16;
constexpr std::size_t mostModes = 80;

static void filterStage(const LaneFilter& filter) {
    SectionState states[mostSections] = {};
    for (std::int64_t first = 0; first < filter.frames; first += blockFrames) {
        const std::int64_t left = filter.frames - first;
        const std::int64_t count = left < blockFrames ? left : blockFrames;
        runCascade(filter.sections, states, filter.sectionCount, filter.samples + first * laneCount,
                   count);
    }
}

static void shapeStage(LaneShape& shape) {
    alignas(64) double samples[blockFrames * laneCount];
    alignas(64) double wet[blockFrames * laneCount];
    SectionState sectionStates[mostSections] = {};
    ModeState modeStates[mostModes] = {};
    Followers followers;
    const Vector lengths = load(shape.lengths);
    const Vector ends = lengths + static_cast<double>(shape.tail);
    Vector dryPeak = all(0.0);
    Vector wetPeak = all(0.0);
    for (std::int64_t first = 0; first < shape.frames; first += blockFrames) {
        const std::int64_t left = shape.frames - first;
        const std::int64_t count = left < blockFrames ? left : blockFrames;
        const std::int64_t place = first * laneCount;
        __builtin_memcpy(samples, shape.input + place,
                         static_cast<std::size_t>(count * laneCount) * sizeof(double));
        runCascade(shape.sections, sectionStates, shape.sectionCount, samples, count);
        if (shape.transient) {
            runTransient(followers, load(shape.attack), load(shape.sustain), samples, count);
        }
        dryPeak = keepDry(samples, first, count, lengths, dryPeak, shape.dry + place);
        if (shape.modeCount > 0) {
            runBody(shape.modes, modeStates, shape.modeCount, samples, wet, count);
            wetPeak = keepWet(wet, first, count, ends, wetPeak, shape.wet + place);
        }
    }
    static constexpr double silence[blockFrames * laneCount] = {};
    const std::int64_t end = shape.frames + shape.tail;
    for (std::int64_t first = shape.frames; shape.modeCount > 0 && first < end;
         first += blockFrames) {
        const std::int64_t left = end - first;
        const std::int64_t count = left < blockFrames ? left : blockFrames;
        // The same code on silence: a lane that ends early must come out as one that ends last.
        runBody(shape.modes, modeStates, shape.modeCount, silence, wet, count);
        wetPeak = keepWet(wet, first, count, ends, wetPeak, shape.wet + first * laneCount);
    }
    store(dryPeak, &shape.dryPeak.lane[0]);
    store(wetPeak, &shape.wetPeak.lane[0]);
}

} // namespace vornic::lanestages
