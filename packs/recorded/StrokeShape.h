#pragma once

#include "packs/recorded/KeyRecording.h"

#include <cstddef>
#include <span>
#include <vector>

/// Measuring and cutting one recorded keystroke, 48 kHz mono.
namespace vornic::packs {

/// Samples a millisecond.
inline constexpr std::size_t millisecond = 48;

/// Decibels of an amplitude or of an RMS value; -200 for silence.
double decibels(double amplitude);

/// The RMS value of `samples`, 0 for none.
double rms(std::span<const float> samples);

/// The largest magnitude in `samples`, 0 for none.
float peak(std::span<const float> samples);

/// Loudness of a stroke in dBFS: RMS over its first 40 ms, which hold nearly all of its energy.
double strokeLevel(std::span<const float> samples);

/// Where the stroke begins, in samples. A press begins at the attack of its loudest event: what the
/// finger did to the key cap before, at least 3 ms apart from it, happened before the key reported
/// and would make the sound late. A release begins at its first event within 20 dB of the loudest,
/// since the spring's return and the key cap's stop belong together.
std::size_t strokeOnset(std::span<const float> samples, Stroke stroke);

/// Whether the samples, as the file holds them, ran into full scale: three or more in a row there,
/// of one sign. Single ones are harmless and come from levelling a file to its peak.
bool isClipped(std::span<const float> samples);

/// Whether another stroke follows: later than 100 ms after the loudest millisecond, one that
/// is less than 14 dB weaker. A stroke's own rebounds come sooner and are weaker.
bool holdsSecondStroke(std::span<const float> samples);

/// Removes the mean and, with a fourth-order Butterworth high-pass at 60 Hz, room rumble, which in
/// some recordings is louder than the end of the stroke; a key's own sound begins above 100 Hz.
void removeRumble(std::vector<float>& samples);

/// The stroke from 1 ms before `onset` to 260 ms after its start, where what is left is the noise
/// of the room, with short fades at both cuts.
std::vector<float> cutStroke(std::span<const float> samples, std::size_t onset);

} // namespace vornic::packs
