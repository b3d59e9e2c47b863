#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vornic {

/// The bytes in the standard base64 alphabet, with padding and without line breaks.
/// Thread: any, as everything here.
std::string base64Encoded(std::span<const std::byte> bytes);

/// The bytes that the text stands for; none unless it is what `base64Encoded` gives for them: other
/// characters (blanks and line breaks too), missing padding and left-over bits are refused.
std::optional<std::vector<std::byte>> base64Decoded(std::string_view text);

} // namespace vornic
