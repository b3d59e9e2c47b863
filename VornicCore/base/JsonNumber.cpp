#include "VornicCore/base/JsonNumber.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace vornic {

namespace {

template <typename Number>
std::string shortest(Number value) {
    std::array<char, 32> text{};
    char* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

} // namespace

std::string numberText(double value) {
    // Without a fraction it would be read as an integer, which has no negative zero.
    return value == 0 && std::signbit(value) ? "-0.0" : shortest(value);
}

double fromSingle(float value) {
    const auto exact = static_cast<double>(value);
    if (!std::isfinite(value)) {
        return exact;
    }
    const std::string text = shortest(value);
    double rounded = 0;
    std::from_chars(text.data(), text.data() + text.size(), rounded);
    // Rounding to a double and then to a single may end at a neighbour; then only the exact number
    // will do.
    return toSingle(rounded) == value ? rounded : exact;
}

std::optional<float> toSingle(double value) {
    constexpr float largest = std::numeric_limits<float>::max();
    // From here on, the nearest single would be infinite: half a step above the largest one.
    constexpr double tooLarge = 0x1.ffffffp127;
    const double magnitude = std::abs(value);
    if (!(magnitude < tooLarge)) {
        return std::nullopt;
    }
    if (magnitude > static_cast<double>(largest)) {
        return std::copysign(largest, static_cast<float>(value < 0 ? -1 : 1));
    }
    return static_cast<float>(value);
}

std::optional<std::int64_t> toInteger(double value) {
    constexpr double limit = 0x1p63;
    if (!(value >= -limit && value < limit)) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(value);
}

} // namespace vornic
