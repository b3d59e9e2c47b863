#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace vornic {

/// Whether letting a key go is heard. `inherit` leaves it to the group, and then to the board.
enum class ReleaseMode : std::uint8_t { off, on, inherit };

template <>
struct CaseNames<ReleaseMode> {
    static constexpr std::array names{
        CaseName{ReleaseMode::off, "off", "Off"},
        CaseName{ReleaseMode::on, "on", "On"},
        CaseName{ReleaseMode::inherit, "inherit", "Inherit"},
    };
};

/// How a group of keys, or one key, plays. Thread: any, as everything here.
struct Assignment {
    /// The id of a sound of the board; absent: this level sets none.
    std::optional<std::string> sound = std::nullopt;
    /// Of a key, added to its group's.
    double gainDb = 0;
    /// Semitones; of a key, added to its group's.
    double pitch = 0;
    /// -1 (left) to +1 (right); absent: where the key is.
    std::optional<double> pan = std::nullopt;
    ReleaseMode release = ReleaseMode::inherit;

    bool operator==(const Assignment&) const = default;
};

} // namespace vornic
