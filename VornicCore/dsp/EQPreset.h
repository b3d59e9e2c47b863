#pragma once

#include "VornicCore/dsp/Equalizer.h"

#include <array>
#include <string_view>

namespace vornic {

/// A named equaliser setting that the user picks. Thread: any.
struct EQPreset {
    /// Stable: boards and settings may name it.
    std::string_view id;
    std::string_view name;
    std::string_view summary;
    Equalizer eq;

    static constexpr std::string_view defaultID = "warm";

    /// Every preset, in the order shown.
    static const std::array<EQPreset, 8>& all();

    /// The preset with that id (capitals matter); null if there is none.
    static const EQPreset* named(std::string_view id);

    /// The first preset with exactly these gains; null if there is none.
    static const EQPreset* matching(const Equalizer& eq);

    bool operator==(const EQPreset&) const = default;
};

} // namespace vornic
