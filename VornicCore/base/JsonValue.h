#pragma once

#include "VornicCore/base/CaseNames.h"
#include "VornicCore/base/JsonNumber.h"
#include "VornicCore/base/JsonReader.h"
#include "VornicCore/base/JsonRecord.h"
#include "VornicCore/base/JsonText.h"
#include "VornicCore/base/Uuid.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace vornic {

/// How a type stands in documents: `read` throws DecodeError, `write` never fails.
template <typename T>
struct JsonValue;

template <>
struct JsonValue<std::string> {
    static std::string read(const JsonReader& in) { return in.string(); }
    static nlohmann::json write(const std::string& value) { return value; }
};

template <>
struct JsonValue<bool> {
    static bool read(const JsonReader& in) { return in.boolean(); }
    static nlohmann::json write(bool value) { return value; }
};

template <>
struct JsonValue<double> {
    static double read(const JsonReader& in) { return in.number(); }
    static nlohmann::json write(double value) { return value; }
};

template <>
struct JsonValue<float> {
    static float read(const JsonReader& in) { return in.single(); }
    static nlohmann::json write(float value) { return fromSingle(value); }
};

template <>
struct JsonValue<std::int64_t> {
    static std::int64_t read(const JsonReader& in) { return in.integer(); }
    static nlohmann::json write(std::int64_t value) { return value; }
};

template <>
struct JsonValue<Uuid> {
    static Uuid read(const JsonReader& in) {
        const std::string text = in.string();
        const std::optional<Uuid> value = Uuid::parse(text);
        if (!value) {
            in.fail("expected a UUID, found " + inQuotes(text));
        }
        return *value;
    }
    static nlohmann::json write(const Uuid& value) { return value.text(); }
};

/// The case that a raw string stands for.
template <NamedEnum Enum>
Enum caseFromJson(const JsonReader& in, std::string_view raw) {
    const std::optional<Enum> value = caseFromRawString<Enum>(raw);
    if (!value) {
        in.fail("unknown value " + inQuotes(raw));
    }
    return *value;
}

template <NamedEnum Enum>
struct JsonValue<Enum> {
    static Enum read(const JsonReader& in) { return caseFromJson<Enum>(in, in.string()); }
    static nlohmann::json write(Enum value) { return rawString(value); }
};

template <typename T>
struct JsonValue<std::vector<T>> {
    static std::vector<T> read(const JsonReader& in) {
        std::vector<T> values;
        for (const JsonReader& element : in.elements()) {
            values.push_back(JsonValue<T>::read(element));
        }
        return values;
    }
    static nlohmann::json write(const std::vector<T>& values) {
        nlohmann::json array = nlohmann::json::array();
        for (const T& value : values) {
            array.push_back(JsonValue<T>::write(value));
        }
        return array;
    }
};

/// An array, written in case order; a case that occurs twice counts once.
template <NamedEnum Enum>
struct JsonValue<std::set<Enum>> {
    static std::set<Enum> read(const JsonReader& in) {
        std::set<Enum> values;
        for (const JsonReader& element : in.elements()) {
            values.insert(JsonValue<Enum>::read(element));
        }
        return values;
    }
    static nlohmann::json write(const std::set<Enum>& values) {
        nlohmann::json array = nlohmann::json::array();
        for (const Enum value : values) {
            array.push_back(rawString(value));
        }
        return array;
    }
};

template <typename T>
struct JsonValue<std::map<std::string, T, std::less<>>> {
    using Map = std::map<std::string, T, std::less<>>;
    static Map read(const JsonReader& in) {
        Map values;
        for (const auto& [name, member] : in.members()) {
            values.emplace(name, JsonValue<T>::read(member));
        }
        return values;
    }
    static nlohmann::json write(const Map& values) {
        nlohmann::json object = nlohmann::json::object();
        for (const auto& [name, value] : values) {
            object[name] = JsonValue<T>::write(value);
        }
        return object;
    }
};

/// An object whose members are named by raw strings.
template <NamedEnum Enum, typename T>
struct JsonValue<std::map<Enum, T>> {
    static std::map<Enum, T> read(const JsonReader& in) {
        std::map<Enum, T> values;
        for (const auto& [name, member] : in.members()) {
            const Enum key = caseFromJson<Enum>(member, name);
            values.emplace(key, JsonValue<T>::read(member));
        }
        return values;
    }
    static nlohmann::json write(const std::map<Enum, T>& values) {
        nlohmann::json object = nlohmann::json::object();
        for (const auto& [key, value] : values) {
            object[std::string(rawString(key))] = JsonValue<T>::write(value);
        }
        return object;
    }
};

/// A field of a record: required, or absent where the member is missing or null.
template <typename T>
struct JsonField {
    static T read(const JsonReader& record, std::string_view name) {
        return JsonValue<T>::read(record.member(name));
    }
    static void write(nlohmann::json& record, std::string_view name, const T& value) {
        record[std::string(name)] = JsonValue<T>::write(value);
    }
};

template <typename T>
struct JsonField<std::optional<T>> {
    static std::optional<T> read(const JsonReader& record, std::string_view name) {
        const std::optional<JsonReader> member = record.optionalMember(name);
        return member ? std::optional<T>(JsonValue<T>::read(*member)) : std::nullopt;
    }
    static void write(nlohmann::json& record, std::string_view name,
                      const std::optional<T>& value) {
        if (value) {
            JsonField<T>::write(record, name, *value);
        }
    }
};

/// An object with the members of the record; others are ignored. Thread: any, as everything here.
template <HasJsonRecord Record>
struct JsonValue<Record> {
    static Record read(const JsonReader& in) {
        Record record;
        std::apply([&](const auto&... members) { (readMember(in, record, members), ...); },
                   JsonRecord<Record>::members);
        return record;
    }
    static nlohmann::json write(const Record& record) {
        nlohmann::json object = nlohmann::json::object();
        std::apply([&](const auto&... members) { (writeMember(object, record, members), ...); },
                   JsonRecord<Record>::members);
        return object;
    }

  private:
    template <typename Value>
    static void readMember(const JsonReader& in, Record& record,
                           const JsonMember<Record, Value>& member) {
        record.*member.field = JsonField<Value>::read(in, member.name);
    }
    template <typename Value>
    static void readMember(const JsonReader& in, Record& record,
                           const AddedJsonMember<Record, Value>& member) {
        if (const std::optional<JsonReader> found = in.optionalMember(member.name)) {
            record.*member.field = JsonValue<Value>::read(*found);
        }
    }
    template <typename Value>
    static void writeMember(nlohmann::json& object, const Record& record,
                            const JsonMember<Record, Value>& member) {
        JsonField<Value>::write(object, member.name, record.*member.field);
    }
    template <typename Value>
    static void writeMember(nlohmann::json& object, const Record& record,
                            const AddedJsonMember<Record, Value>& member) {
        if (record.*member.field != Record().*member.field) {
            JsonField<Value>::write(object, member.name, record.*member.field);
        }
    }
};

} // namespace vornic
