#pragma once

#include "VornicCore/render/RenderJob.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vornic {

/// A job that renders in bounded time and memory. Thread: any, as everything here.
struct LimitedJob {
    RenderJob job;
    /// One line for every field that had to be changed, with its name.
    std::vector<std::string> messages;
};

/// Moves what no board made by hand holds (a board may come from a file) into these limits; a value
/// that is not a number becomes the neutral one. Ordinary jobs stay as they are.
LimitedJob limited(RenderJob job);

/// The limits, far beyond anything useful.
namespace JobLimits {
inline constexpr std::int64_t mostVariations = 64;
inline constexpr std::size_t mostLayers = 32;
inline constexpr std::size_t mostModes = 32;
inline constexpr double pitch = 36;      // semitones either way
inline constexpr double gainDb = 120;    // either way
inline constexpr double offsetMs = 2000; // either way
inline constexpr double decayMs = 2000;  // of a mode
inline constexpr double startMs = 10000; // of the damping, either way
inline constexpr double character = 4;   // either way
inline constexpr double variation = 4;   // either way
inline constexpr double rattle = 16;
/// Of a recording and of a mix of layers, in frames (5 s).
inline constexpr std::size_t mostFrames = 240'000;
/// Of a finished stroke, in frames (4 s).
inline constexpr std::size_t mostStrokeFrames = 192'000;
} // namespace JobLimits

} // namespace vornic
