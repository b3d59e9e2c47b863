#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vornic {

/// A text from a board as it may be shown in a message or on a terminal: at most `longest` bytes of
/// it, and "?" for every character that controls the output instead of being seen: control
/// characters, and those that turn the direction of writing. Thread: any.
std::string readable(std::string_view text, std::size_t longest = 60);

/// Whether lines may be broken in a text.
enum class Lines : bool { joined, kept };

/// A text from a board as it may be shown in a window: whole, with every such character shown as
/// what it is, "[U+202E]". With `Lines::kept`, line feeds stay line feeds. Thread: any.
std::string plainlyVisible(std::string_view text, Lines lines = Lines::joined);

} // namespace vornic
