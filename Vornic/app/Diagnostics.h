#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vornic {

/// How well the program does on this machine. Thread: any, as everything here.
struct Diagnostics {
    /// Milliseconds from the last key's time stamp to its sound, and the most so far.
    double keyToAppMillis = 0;
    double keyToAppMaxMillis = 0;
    /// How many keys that was measured for.
    std::int64_t keys = 0;
    /// Milliseconds from a rendered frame to the ear; absent when the device does not say.
    std::optional<double> deviceMillis;
    /// Frames per call of the output; absent when unknown.
    std::optional<std::int64_t> deviceBuffer;
    bool engineRunning = false;
    /// As AudioOutput::hasLostRealTime.
    bool realTimeLost = false;
    /// Milliseconds that the last render of a whole board took; absent before the first.
    std::optional<double> lastRenderMillis;

    bool operator==(const Diagnostics&) const = default;
};

/// How the settings show it.
namespace DiagnosticsText {
/// "1.3 ms", or "unknown".
std::string millis(std::optional<double> value);
/// "128 frames", or "unknown".
std::string frames(std::optional<std::int64_t> value);
/// "running", or "paused (starts on the next key)".
std::string engine(bool running);
} // namespace DiagnosticsText

} // namespace vornic
