#pragma once

#include <cstdint>
#include <optional>

namespace vornic {

/// `value` truncated toward zero; none if it is not a number, or the result does not fit a signed
/// 64-bit integer (where the language leaves the conversion undefined).
constexpr std::optional<std::int64_t> integerPart(double value) noexcept {
    // Both limits are exact as doubles, and any comparison with NaN is false.
    if (value >= -0x1p63 && value < 0x1p63) {
        return static_cast<std::int64_t>(value);
    }
    return std::nullopt;
}

} // namespace vornic
