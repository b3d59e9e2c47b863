#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vornic {

/// The shortest text that reads back as the same number, the sign of a zero included. Independent
/// of the locale. Only for finite numbers. Thread: any, as everything here.
std::string numberText(double value);

/// The number that stands in a document for a single: the one whose shortest text is the single's
/// own. Read back and rounded to a single, it gives the same one again.
double fromSingle(float value);

/// The nearest single; none if the number is too large for one.
std::optional<float> toSingle(double value);

/// The integer part; none if it is too large, or the value is not a number.
std::optional<std::int64_t> toInteger(double value);

} // namespace vornic
