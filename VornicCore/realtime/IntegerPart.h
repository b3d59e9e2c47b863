#pragma once

#include "VornicCore/realtime/Fatal.h"

#include <cstdint>
#include <optional>

namespace vornic {

/// `value` truncated toward zero; none if it is not a number, or the result does not fit a signed
/// 64-bit integer (where the language leaves the conversion undefined).
/// Thread: any, as everything here.
constexpr std::optional<std::int64_t> integerPart(double value) noexcept {
    // Both limits are exact as doubles, and any comparison with NaN is false.
    if (value >= -0x1p63 && value < 0x1p63) {
        return static_cast<std::int64_t>(value);
    }
    return std::nullopt;
}

/// `value` truncated toward zero; stops the program with `check` as its message where
/// `integerPart` has none.
inline std::int64_t requireIntegerPart(double value, const char* check) noexcept {
    const std::optional<std::int64_t> whole = integerPart(value);
    if (!whole) [[unlikely]] {
        fatal(check);
    }
    return *whole;
}

} // namespace vornic
