#pragma once

#include "VornicCore/strokes/Envelope.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vornic {

/// The samples at which something is hit, keys above all: where the recording rises by 18 dB above
/// the noise of the room and to within 38 dB of its loudest, after it had fallen by 10 dB. The
/// envelope has a frame at least. Thread: any, as everything here.
std::vector<std::int64_t> keyOnsets(const Envelope& envelope);

/// The largest magnitude in the 20 ms from `place`, not below 0, on. The rate in Hz.
float loudnessAt(std::span<const float> samples, std::int64_t place, double sampleRate);

/// A hit that is quieter than the one before it by more than 4 dB is its echo, or the key's return.
inline constexpr float echoRatio = 0.63095737F;

} // namespace vornic
