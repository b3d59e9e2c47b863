#pragma once

#include "VornicCore/board/json/JsonError.h"
#include "VornicCore/board/json/JsonParse.h"
#include "VornicCore/board/json/JsonValue.h"
#include "VornicCore/board/json/JsonWrite.h"

#include <string>
#include <string_view>

namespace vornic {

/// Reads a document that holds a `T`. Throws DecodeError.
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
