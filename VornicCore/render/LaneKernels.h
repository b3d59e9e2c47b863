#pragma once

#include <cstddef>
#include <cstdint>

namespace vornic {

/// Strokes processed side by side, one to a lane. Interleaved buffers hold `laneCount` numbers per
/// frame, one of each lane.
inline constexpr std::int64_t laneCount = 4;

/// A number for every lane. A plain array: code built for one processor only may share no library
/// function with the rest of the program.
struct Lanes {
    double lane[laneCount];
};

/// A biquad section (transposed direct form II) with coefficients of its own in every lane.
struct LaneSection {
    Lanes b0, b1, b2, a1, a2;
};

/// One resonant mode, y[n] = feedback1 y[n-1] - feedback2 y[n-2] + gain x[n], equal in all lanes.
struct LaneMode {
    double feedback1, feedback2, gain;
};

/// A cascade of sections run over an interleaved buffer in place.
struct LaneFilter {
    const LaneSection* sections;
    std::size_t sectionCount;
    double* samples;
    std::int64_t frames;
};

/// What comes before the body's level is known: last sections, attack and sustain, the wet body.
struct LaneShape {
    const double* input; // interleaved
    std::int64_t frames; // of the longest lane
    Lanes lengths;       // of each lane, in frames; what lies beyond counts as silence
    const LaneSection* sections;
    std::size_t sectionCount;
    Lanes attack;   // linear gain at full attack, less 1
    Lanes sustain;  // linear gain at full sustain, less 1
    bool transient; // whether attack or sustain differs from 0 anywhere
    const LaneMode* modes;
    std::size_t modeCount;
    std::int64_t tail; // frames of silence appended to every lane if there are modes

    float* dry; // interleaved, `frames`
    float* wet; // interleaved, `frames` + `tail`; written if there are modes
    Lanes dryPeak, wetPeak;
};

/// What follows: mixing the body in, damping, drive, and parting the lanes.
struct LaneFinish {
    const float* dry; // interleaved, `frames`
    std::int64_t frames;
    const float* wet; // interleaved, `frames` + `tail`; unused without `body`
    std::int64_t tail;
    bool body;
    Lanes wetGain;

    bool damping;
    std::int64_t dampingStart; // frame
    double dampingPole;        // of the one-pole low-pass
    double dampingLevel;       // of the envelope at the first damped frame
    double dampingDecay;       // of the envelope, factor per frame

    bool drive;
    double driveGain;

    float* output[laneCount]; // each `frames` + `tail` long
};

/// A pitch shift of one buffer.
struct LaneResample {
    const float* input;
    std::int64_t length;
    double ratio;
    float* output;
    std::int64_t outputLength;
};

/// The stages of the processing chain on several strokes at once, for one kind of processor. They
/// allocate nothing. A lane's result does not depend on what is in the others.
struct LaneKernels {
    void (*filter)(const LaneFilter&);
    void (*shape)(LaneShape&);
    void (*finish)(const LaneFinish&);
    void (*resample)(const LaneResample&);
    /// The largest magnitude of `count` samples, 0 for none; not finite if one of them is not.
    float (*peak)(const float* samples, std::int64_t count);
    /// tanh within 1e-7 of its value, the one that `finish` drives with.
    double (*tanh)(double x);
};

/// The fastest kernels for this processor. Thread: any, as everything here.
const LaneKernels& laneKernels();

/// Kernels for every processor of this architecture.
const LaneKernels& portableLaneKernels();

#if defined(__x86_64__)
/// Kernels for processors with AVX2 and fused multiply-add; only for those.
const LaneKernels& avx2LaneKernels();
#endif

} // namespace vornic
