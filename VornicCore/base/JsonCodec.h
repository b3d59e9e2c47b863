#pragma once

#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/JsonValue.h"

#include <string>
#include <string_view>

namespace vornic {

/// Reads a document that holds a `T`. Throws DecodeError. Thread: any, as everything here.
template <typename T>
T decodeJson(std::string_view text, const JsonLimits& limits = {}) {
    const nlohmann::json document = parseJson(text, limits);
    return JsonValue<T>::read(JsonReader(document));
}

/// Writes a document that holds the value. Throws EncodeError.
template <typename T>
std::string encodeJson(const T& value) {
    return writeJson(JsonValue<T>::write(value));
}

} // namespace vornic
