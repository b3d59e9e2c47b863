#pragma once

#include "VornicCore/base/SampleRate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

/// Offline signal processing on buffers of mono float samples at DSP::sampleRate: functions without
/// state. They never fail: parameters out of range are moved into it, and input that nothing can be
/// done with comes back unchanged. Filters stand in Biquad.h and Tone.h. Thread: any.
namespace vornic::DSP {

/// The factor of a gain in dB: 10^(db/20). Gains above 400 dB count as 400, which keeps the factor,
/// and any product with a sample of audio, finite.
inline double factorOfDecibels(double db) noexcept {
    return std::pow(10.0, std::min(db, 400.0) / 20.0);
}

/// One resonance of a body.
struct Mode {
    /// Hz.
    double frequency = 0;
    /// The time constant of its exponential decay, in milliseconds.
    double decayMs = 0;
    double gainDb = 0;

    bool operator==(const Mode&) const = default;
};

/// What remains of a mode's ringing after one frame, for a decay time of 0 or more: nothing for 0,
/// of whatever sign.
inline double modeRadius(const Mode& mode) noexcept {
    return std::exp(-1.0 / (std::abs(mode.decayMs) / 1000.0 * sampleRate));
}

/// The largest magnitude in `samples`; 0 if there are none. Samples that are not numbers are passed
/// over.
[[nodiscard]] float peak(const std::vector<float>& samples) noexcept;

/// The index of the first sample of at least 0.3 times the peak; 0 if there is no sound.
[[nodiscard]] std::int64_t onset(const std::vector<float>& samples) noexcept;

/// Brings the first 40 ms of `samples` to an RMS of `targetDb` dBFS, in place: strokes of different
/// lengths become equally loud at the strike. Where the peak of the whole would exceed `ceilingDb`
/// dBFS, it lands on it instead. Unchanged if those 40 ms are silent (RMS not above 1e-7) or the
/// gain would not be finite.
void level(std::vector<float>& samples, double targetDb, double ceilingDb) noexcept;

/// Cuts `samples` 4 ms after the last one above `floorDb` dB relative to the peak, and fades the
/// last 4 ms (a third, if that is less) to 0. Empty if no sample is above; unchanged if `floorDb`
/// is not a number.
void trimTail(std::vector<float>& samples, double floorDb) noexcept;

/// Fades the last 4 ms (a third, if that is less) to 0, so that a cut is not heard as a click.
/// Fewer than 3 samples stay as they are.
void fadeEnd(std::span<float> samples) noexcept;

/// Raises or lowers the strike by `attackDb` and the decay by `sustainDb`, in place. Where a fast
/// follower of the level leads a slow one the attack gain applies, where the slow one leads the
/// sustain gain, with a smooth blend between. Both exactly 0, or either not a number: unchanged.
void transient(std::vector<float>& samples, double attackDb, double sustainDb) noexcept;

/// Soft saturation by tanh, in place; full scale stays full scale. Unchanged if `amount` is not
/// above 0.
void drive(std::vector<float>& samples, double amount) noexcept;

/// A muting pad: darkens and shortens `samples` in place from `startMs` on, after a cross-fade of
/// 2 ms. `amount` 0...1 moves the low-pass from 20 kHz to 2 kHz and the decay from 200 ms to 8 ms;
/// more counts as 1. Unchanged if `amount` is not above 0 or `startMs` is not a number.
void damping(std::vector<float>& samples, double amount, double startMs) noexcept;

/// The longest ring-out that body() adds, in samples (10 s): a mode of an absurd decay time must
/// not ask for all memory.
inline constexpr double longestTail = 480000.0;

/// Adds the ringing of `modes` to `samples`, normalised to the peak of the sound and scaled by
/// `mix`; the buffer grows by three times the longest decay time. Unchanged if `mix` is not above
/// 0, or there are no modes or no sound. A mode that could not ring (a value that is not finite, a
/// decay time below 0) is passed over.
void body(std::vector<float>& samples, const std::vector<Mode>& modes, double mix);

/// The lowest pitch shift of resample(), in semitones: six octaves, 64 times the length.
inline constexpr double lowestPitch = -72.0;

/// `samples` played back at 2^(semitones/12) of their rate, with a Catmull-Rom cubic between them:
/// positive semitones raise and shorten. Shifts below `lowestPitch` count as that. A copy if
/// `semitones` is 0 or not a number, or there are fewer than 2 samples.
[[nodiscard]] std::vector<float> resample(const std::vector<float>& samples, double semitones);

/// How strong a stroke that sounds alone is to the ear: the mean square of its first 400 ms behind
/// the K weighting of ITU-R BS.1770-4, whose window for the momentary loudness is that long. A
/// stroke that is shorter is followed by silence. Mono at DSP::sampleRate.
[[nodiscard]] double weightedPower(std::span<const float> samples) noexcept;

/// That power as loudness of one channel, in LUFS; minus infinity for none.
[[nodiscard]] double loudnessOfPower(double power) noexcept;

} // namespace vornic::DSP
