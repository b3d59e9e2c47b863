#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vornic {

/// A value of a document and the path to it. Reading it as something that it is not throws
/// DecodeError with the path. Refers to the document, which has to outlive it. Thread: any.
class JsonReader {
  public:
    explicit JsonReader(const nlohmann::json& value, std::string path = {})
        : value_(&value), path_(std::move(path)) {}

    std::string string() const;
    bool boolean() const;

    /// Any number.
    double number() const;

    /// Any number that a single can hold, rounded to the nearest one.
    float single() const;

    /// A whole number, however it is written: 12.0 is one, 1.5 is not.
    std::int64_t integer() const;

    bool isNull() const;

    /// The member of an object, which has to be there.
    JsonReader member(std::string_view name) const;

    /// The member of an object, absent where it is missing or null.
    std::optional<JsonReader> optionalMember(std::string_view name) const;

    /// Every member of an object, sorted by name.
    std::vector<std::pair<std::string, JsonReader>> members() const;

    /// Every element of an array.
    std::vector<JsonReader> elements() const;

    const std::string& path() const { return path_; }

    /// Throws DecodeError with the path of this value.
    [[noreturn]] void fail(const std::string& reason) const;

  private:
    [[noreturn]] void failExpecting(std::string_view expected) const;

    const nlohmann::json* find(std::string_view name) const;

    const nlohmann::json* value_;
    std::string path_;
};

} // namespace vornic
