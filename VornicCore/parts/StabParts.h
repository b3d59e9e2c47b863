#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>

namespace vornic {

enum class StabTuning : std::uint8_t { stock, lubed, tuned };

template <>
struct CaseNames<StabTuning> {
    static constexpr std::array names{
        CaseName{StabTuning::stock, "stock", "Stock"},
        CaseName{StabTuning::lubed, "lubed", "Lubed"},
        CaseName{StabTuning::tuned, "tuned", "Tuned"},
    };
};

/// The stabilisers under the wide keys. Thread: any.
struct StabParts {
    StabTuning tuning = StabTuning::tuned;
    /// The share of rattle to mix in; 0 is none.
    double rattle = 0.15;

    bool operator==(const StabParts&) const = default;
};

} // namespace vornic
