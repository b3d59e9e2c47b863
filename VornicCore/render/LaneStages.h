#pragma once

#include "VornicCore/render/LaneFinishStage.h"
#include "VornicCore/render/LaneShapeStage.h"
#include "VornicCore/render/LaneVector.h"

#include <cstdint>

// The remaining stages, on one buffer, and the table of all. Thread: any, as everything here.
namespace vornic::lanestages {

// Magnitudes compare as their bits do, and what is not finite is above all.
static inline FloatIntegers magnitudeBits(const float* samples) {
    constexpr std::int32_t allButSign = INT32_MAX;
    return reinterpret_cast<FloatIntegers>(loadFloats(samples)) & allButSign;
}
static inline FloatIntegers largerBits(FloatIntegers a, FloatIntegers b) {
    return a > b ? a : b;
}

static float peakStage(const float* samples, std::int64_t count) {
    FloatIntegers peakA{};
    FloatIntegers peakB{};
    std::int64_t n = 0;
    for (; n + 8 <= count; n += 8) {
        peakA = largerBits(peakA, magnitudeBits(samples + n));
        peakB = largerBits(peakB, magnitudeBits(samples + n + 4));
    }
    const FloatIntegers peaks = largerBits(peakA, peakB);
    std::int32_t peak = 0;
    for (int lane = 0; lane < 4; ++lane) {
        peak = peaks[lane] > peak ? peaks[lane] : peak;
    }
    for (; n < count; ++n) {
        const std::int32_t level = __builtin_bit_cast(std::int32_t, samples[n]) & INT32_MAX;
        peak = level > peak ? level : peak;
    }
    return __builtin_bit_cast(float, peak);
}

// A cubic through the middle two of four neighbours, for four places at once.
struct Cubic {
    Floats c0, c1, c2, c3;
};

static inline Cubic catmullRom(Floats y0, Floats y1, Floats y2, Floats y3) {
    return {.c0 = y1,
            .c1 = 0.5F * (y2 - y0),
            .c2 = y0 - 2.5F * y1 + 2.0F * y2 - 0.5F * y3,
            .c3 = 0.5F * (y3 - y0) + 1.5F * (y1 - y2)};
}

static inline Floats cubicAt(const Cubic& cubic, Floats t) {
    return ((cubic.c3 * t + cubic.c2) * t + cubic.c1) * t + cubic.c0;
}

static inline float sampleAt(const LaneResample& shift, std::int64_t index) {
    return index >= 0 && index < shift.length ? shift.input[index] : 0.0F;
}

/// One output sample, near an end of the input.
static inline float resampledAt(const LaneResample& shift, std::int64_t place) {
    const double position = shift.ratio * static_cast<double>(place);
    const auto index = static_cast<std::int64_t>(position);
    const auto t = static_cast<float>(position - static_cast<double>(index));
    const float y0 = sampleAt(shift, index - 1);
    const float y1 = sampleAt(shift, index);
    const float y2 = sampleAt(shift, index + 1);
    const float y3 = sampleAt(shift, index + 2);
    const Cubic cubic = catmullRom(Floats{y0}, Floats{y1}, Floats{y2}, Floats{y3});
    return cubicAt(cubic, Floats{t})[0];
}

/// Four output samples whose neighbours all lie in the input.
static inline Floats resampledAtFour(const LaneResample& shift, std::int64_t place) {
    const auto first = static_cast<double>(place);
    const Vector position = shift.ratio * (Vector{first, first, first, first} + Vector{0, 1, 2, 3});
    const FloatIntegers index = __builtin_convertvector(position, FloatIntegers);
    const Floats t = narrowed(position - __builtin_convertvector(index, Vector));
    const Floats a = loadFloats(shift.input + index[0] - 1);
    const Floats b = loadFloats(shift.input + index[1] - 1);
    const Floats c = loadFloats(shift.input + index[2] - 1);
    const Floats d = loadFloats(shift.input + index[3] - 1);
    const FourFloats y = transposed(a, b, c, d);
    return cubicAt(catmullRom(y.a, y.b, y.c, y.d), t);
}

static void resampleStage(const LaneResample& shift) {
    // Where the neighbours of the first and the last sample still lie in the input; a frame more on
    // either side than rounding could cost.
    const auto begin = static_cast<std::int64_t>(1.0 / shift.ratio) + 2;
    const auto end =
        static_cast<std::int64_t>(static_cast<double>(shift.length - 3) / shift.ratio) - 1;
    std::int64_t place = 0;
    for (; place < begin && place < shift.outputLength; ++place) {
        shift.output[place] = resampledAt(shift, place);
    }
    for (; place + 4 <= end; place += 4) {
        storeFloats(resampledAtFour(shift, place), shift.output + place);
    }
    for (; place < shift.outputLength; ++place) {
        shift.output[place] = resampledAt(shift, place);
    }
}

static constexpr LaneKernels kernels() {
    return {.filter = filterStage,
            .shape = shapeStage,
            .finish = finishStage,
            .resample = resampleStage,
            .peak = peakStage,
            .tanh = tanhStage};
}

} // namespace vornic::lanestages
