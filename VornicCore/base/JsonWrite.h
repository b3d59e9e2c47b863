#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vornic {

/// Writes a document: members sorted by name, two spaces a level, numbers in the shortest form that
/// reads back the same. Throws EncodeError, with the path, for a number that is not finite and for
/// a text that is not UTF-8. Thread: any.
std::string writeJson(const nlohmann::json& document);

} // namespace vornic
