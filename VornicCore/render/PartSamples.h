#pragma once

#include <span>
#include <string_view>
#include <vector>

/// The synthetic layers that parts ask for, cut from recorded keystrokes (mono, 48 kHz).
/// Thread: any, as everything here.
namespace vornic::PartSamples {

// Under these keys a sample source holds the layers.
inline constexpr std::string_view clickKey = "part/click";
inline constexpr std::string_view springKey = "part/spring";
inline constexpr std::string_view rattleKey = "part/rattle";

/// The snap of a switch, at most 20 ms.
std::vector<float> click(std::span<const float> from);
/// The ping of a spring, at most 70 ms; the strike itself, the first 4 ms, is left out.
std::vector<float> spring(std::span<const float> from);
/// The wire of a stabiliser, at most 35 ms.
std::vector<float> rattle(std::span<const float> from);

/// The first `ms` milliseconds, faded out over at most 6 ms, the peak at 0.5. Silence stays silent;
/// nothing stays nothing.
std::vector<float> gate(std::span<const float> samples, double ms);

} // namespace vornic::PartSamples
