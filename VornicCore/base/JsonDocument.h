#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <stop_token>
#include <string>
#include <string_view>

namespace vornic {

/// What a document may cost. Ours are far below: a board nests seven deep.
/// Thread: any, as everything here.
struct JsonLimits {
    /// Objects and arrays within each other.
    std::size_t depth = 64;
    /// Values of any kind; it bounds the memory, some hundred bytes for each value besides the
    /// text.
    std::size_t values = 1'000'000;
    /// When requested, reading ends with an error: a large document takes a second.
    std::stop_token stop{};
    /// Of a member that occurs twice the last counts, as browsers have it, instead of an error.
    bool lastOfEqualMembers = false;
};

/// Reads a document: RFC 8259 to the letter, in UTF-8 without a byte order mark. Throws DecodeError
/// for anything else, for a member that occurs twice and for a document beyond the limits.
nlohmann::json parseJson(std::string_view text, const JsonLimits& limits = {});

/// Writes a document: members sorted by name, two spaces a level, numbers in the shortest form that
/// reads back the same. Throws EncodeError, with the path, for a number that is not finite and for
/// a text that is not UTF-8.
std::string writeJson(const nlohmann::json& document);

} // namespace vornic
