#include "VornicCore/base/JsonReader.h"

#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/JsonNumber.h"
#include "VornicCore/base/JsonText.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>

namespace vornic {

namespace {

using nlohmann::json;

std::string_view kind(const json& value) {
    switch (value.type()) {
    case json::value_t::null:
        return "null";
    case json::value_t::boolean:
        return "a boolean";
    case json::value_t::string:
        return "a string";
    case json::value_t::array:
        return "an array";
    case json::value_t::object:
        return "an object";
    default:
        return "a number";
    }
}

} // namespace

std::string JsonReader::string() const {
    if (!value_->is_string()) {
        failExpecting("a string");
    }
    return value_->get<std::string>();
}

bool JsonReader::boolean() const {
    if (!value_->is_boolean()) {
        failExpecting("a boolean");
    }
    return value_->get<bool>();
}

double JsonReader::number() const {
    if (!value_->is_number()) {
        failExpecting("a number");
    }
    return value_->get<double>();
}

float JsonReader::single() const {
    const std::optional<float> value = toSingle(number());
    if (!value) {
        fail(numberText(number()) + " is too large for a single");
    }
    return *value;
}

std::int64_t JsonReader::integer() const {
    if (!value_->is_number()) {
        failExpecting("an integer");
    }
    if (value_->is_number_float()) {
        const double value = value_->get<double>();
        if (std::trunc(value) != value) {
            fail("expected an integer, found " + numberText(value));
        }
        const std::optional<std::int64_t> whole = toInteger(value);
        // The lowest integer is read as such: as a decimal, it stands for one that was too low.
        if (!whole || *whole == std::numeric_limits<std::int64_t>::min()) {
            fail(numberText(value) + " is too large for an integer");
        }
        return *whole;
    }
    if (value_->is_number_unsigned() &&
        value_->get<std::uint64_t>() >
            static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        fail(std::to_string(value_->get<std::uint64_t>()) + " is too large for an integer");
    }
    return value_->get<std::int64_t>();
}

bool JsonReader::isNull() const {
    return value_->is_null();
}

JsonReader JsonReader::member(std::string_view name) const {
    const json* const found = find(name);
    JsonReader reader(found != nullptr ? *found : *value_, memberPath(path_, name));
    if (found == nullptr) {
        reader.fail("missing");
    }
    return reader;
}

std::optional<JsonReader> JsonReader::optionalMember(std::string_view name) const {
    const json* const found = find(name);
    if (found == nullptr || found->is_null()) {
        return std::nullopt;
    }
    return JsonReader(*found, memberPath(path_, name));
}

std::vector<std::pair<std::string, JsonReader>> JsonReader::members() const {
    if (!value_->is_object()) {
        failExpecting("an object");
    }
    std::vector<std::pair<std::string, JsonReader>> members;
    members.reserve(value_->size());
    for (const auto& [name, value] : value_->items()) {
        members.emplace_back(name, JsonReader(value, memberPath(path_, name)));
    }
    return members;
}

std::vector<JsonReader> JsonReader::elements() const {
    if (!value_->is_array()) {
        failExpecting("an array");
    }
    std::vector<JsonReader> elements;
    elements.reserve(value_->size());
    for (const json& value : *value_) {
        elements.emplace_back(value, elementPath(path_, elements.size()));
    }
    return elements;
}

void JsonReader::fail(const std::string& reason) const {
    throw DecodeError(path_, reason);
}

void JsonReader::failExpecting(std::string_view expected) const {
    fail("expected " + std::string(expected) + ", found " + std::string(kind(*value_)));
}

const json* JsonReader::find(std::string_view name) const {
    if (!value_->is_object()) {
        failExpecting("an object");
    }
    const auto found = value_->find(name);
    return found == value_->end() ? nullptr : &*found;
}

} // namespace vornic
