#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vornic {

/// A text from a board as it may be shown in a message or on a terminal: at most `longest` bytes of
/// it, and "?" for every character that controls the output instead of being seen.
std::string readable(std::string_view text, std::size_t longest = 60);

} // namespace vornic
