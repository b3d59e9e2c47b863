#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vornic {

// Pieces of messages about documents. Documents come from anywhere: what is quoted from them is
// shortened, and whatever is not printable ASCII becomes a question mark.

/// The text, at most `longest` bytes of it. Thread: any, as everything here.
std::string printable(std::string_view text, std::size_t longest = 40);

/// The text in quotation marks.
std::string inQuotes(std::string_view text);

/// The path of a member or of an element of what stands at `path`.
std::string memberPath(const std::string& path, std::string_view name);
std::string elementPath(const std::string& path, std::size_t index);

} // namespace vornic
