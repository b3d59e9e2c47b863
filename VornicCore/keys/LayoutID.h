#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>

namespace vornic {

/// The physical keyboards that can be drawn. Thread: any.
enum class LayoutID : std::uint8_t { macANSI, macISO, sixty, sixtyFive, seventyFive, tkl, full };

template <>
struct CaseNames<LayoutID> {
    static constexpr std::array names{
        CaseName{LayoutID::macANSI, "macANSI", "MacBook (US)"},
        CaseName{LayoutID::macISO, "macISO", "MacBook (ISO)"},
        CaseName{LayoutID::sixty, "sixty", "60%"},
        CaseName{LayoutID::sixtyFive, "sixtyFive", "65%"},
        CaseName{LayoutID::seventyFive, "seventyFive", "75%"},
        CaseName{LayoutID::tkl, "tkl", "TKL"},
        CaseName{LayoutID::full, "full", "Full size"},
    };
};

} // namespace vornic
