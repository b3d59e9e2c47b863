#pragma once

#include "VornicCore/base/CaseNames.h"

#include <array>
#include <cstdint>

namespace vornic {

/// What the user says is plugged in; `automatic`, written "auto", asks the output device.
/// Thread: any.
enum class OutputKind : std::uint8_t { automatic, headphones, speakers };

template <>
struct CaseNames<OutputKind> {
    static constexpr std::array names{
        CaseName{OutputKind::automatic, "auto", "Automatic"},
        CaseName{OutputKind::headphones, "headphones", "Headphones"},
        CaseName{OutputKind::speakers, "speakers", "Speakers"},
    };
};

} // namespace vornic
