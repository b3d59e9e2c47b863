#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace vornic {

/// How hard a key is struck. The raw values are part of the keys of a voice bank.
/// Thread: any, as everything here.
enum class Velocity : std::uint8_t { soft = 0, medium = 1, hard = 2 };

inline constexpr std::array allVelocities = {Velocity::soft, Velocity::medium, Velocity::hard};

constexpr std::int64_t rawValue(Velocity velocity) {
    return static_cast<std::int64_t>(velocity);
}

/// The velocity with this raw value; none if there is no such.
constexpr std::optional<Velocity> velocityFromRawValue(std::int64_t value) {
    if (value < rawValue(Velocity::soft) || value > rawValue(Velocity::hard)) {
        return std::nullopt;
    }
    return static_cast<Velocity>(value);
}

} // namespace vornic
