#pragma once

namespace vornic::DSP {

/// The one rate, in Hz, of all audio that is processed: 1 ms is 48 samples. Thread: any.
inline constexpr double sampleRate = 48000.0;

} // namespace vornic::DSP
