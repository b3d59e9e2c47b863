#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace vornic {

/// The first document of a YAML text: objects, arrays, null, and every other value as its text.
/// References to other places of the document are refused, since a few of them grow without end.
/// Throws ForeignPackError for what is no YAML or is beyond all reason. Thread: any.
nlohmann::json parseYaml(const std::string& text);

} // namespace vornic
