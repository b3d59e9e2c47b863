#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace vornic {

/// Typing put together from single recorded keystrokes, so that it is known when each key is hit.
/// 48 kHz mono.
struct TypingMix {
    std::vector<float> samples;
    /// Seconds, ascending: where each keystroke first reaches three tenths of its peak.
    std::vector<double> onsets;
};

/// The conditions of a mix.
struct TypingConditions {
    double seconds = 20.0;
    double keysPerSecond = 5.0;
    /// How far the noise of the room is below the keys, in decibels: RMS of all of it against the
    /// first 40 ms of a stroke of middle loudness.
    double noiseDb = 40.0;
    std::uint64_t seed = 1;
};

/// The presses among the recordings of the pack in `folder`, each long enough to be a keystroke.
/// Throws where there are none.
std::vector<std::vector<float>> recordedPresses(const std::filesystem::path& folder);

/// Types keystrokes of `presses`, chosen at random: gaps vary by 30 % to both sides of their mean,
/// loudness by 9 dB. The noise falls by 6 dB an octave above 500 Hz, as fans and traffic do.
/// Equal conditions give equal mixes.
TypingMix mixTyping(const std::vector<std::vector<float>>& presses,
                    const TypingConditions& conditions);

} // namespace vornic
