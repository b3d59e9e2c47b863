#pragma once

#include <pipewire/pipewire.h>

#include <string>
#include <string_view>

namespace vornic {

/// The property `key`; empty when there is none.
std::string_view lookUp(const spa_dict* properties, const char* key);

/// The member "name" of the JSON object `value`; empty when there is none.
std::string nameIn(std::string_view value);

} // namespace vornic
