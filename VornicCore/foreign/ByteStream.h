#pragma once

#include "VornicCore/foreign/ForeignPack.h"

#include <cstddef>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// Values as bytes, for a process of the same build. A type says what it consists of once, for both
// directions, by a function transfer(stream, value). Thread: any.

namespace vornic {

/// What a reader says of bytes that are none of ours.
inline constexpr const char* damagedBytes = "The answer of the helper makes no sense.";

/// Writes.
class ByteWriter {
  public:
    template <typename... Values>
    void operator()(Values&... values) {
        (put(values), ...);
    }
    std::string take() { return std::move(bytes_); }

  private:
    template <typename Plain>
        requires std::is_arithmetic_v<Plain> || std::is_enum_v<Plain>
    void put(const Plain& value) {
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof(value));
    }
    void put(std::string& text) {
        put(text.size());
        bytes_ += text;
    }
    template <typename Value>
    void put(std::optional<Value>& value) {
        put(value.has_value());
        if (value) {
            put(*value);
        }
    }
    template <typename Value>
    void put(std::vector<Value>& values) {
        put(values.size());
        for (Value& value : values) {
            put(value);
        }
    }
    template <typename Value>
    void put(std::set<Value>& values) {
        put(values.size());
        for (const Value& value : values) {
            put(value);
        }
    }
    template <typename Key, typename Value>
    void put(std::map<Key, Value>& values) {
        put(values.size());
        for (auto& [key, value] : values) {
            put(key);
            put(value);
        }
    }
    template <typename Record>
        requires std::is_class_v<Record>
    void put(Record& record) {
        transfer(*this, record);
    }

    std::string bytes_;
};

/// Reads. Throws ForeignPackError for bytes that end too soon.
class ByteReader {
  public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    template <typename... Values>
    void operator()(Values&... values) {
        (get(values), ...);
    }
    bool atEnd() const { return bytes_.empty(); }

  private:
    std::string_view next(std::size_t count) {
        if (count > bytes_.size()) {
            throw ForeignPackError(damagedBytes);
        }
        const std::string_view piece = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        return piece;
    }
    template <typename Plain>
        requires std::is_arithmetic_v<Plain> || std::is_enum_v<Plain>
    void get(Plain& value) {
        std::memcpy(&value, next(sizeof(value)).data(), sizeof(value));
    }
    void get(bool& value) { value = next(1)[0] != 0; }
    /// Of things that take a byte each at least.
    std::size_t count() {
        std::size_t value = 0;
        get(value);
        if (value > bytes_.size()) {
            throw ForeignPackError(damagedBytes);
        }
        return value;
    }
    void get(std::string& text) { text = next(count()); }
    template <typename Value>
    void get(std::optional<Value>& value) {
        bool has = false;
        get(has);
        value.reset();
        if (has) {
            get(value.emplace());
        }
    }
    template <typename Value>
    void get(std::vector<Value>& values) {
        values.clear();
        for (std::size_t left = count(); left > 0; --left) {
            get(values.emplace_back());
        }
    }
    template <typename Value>
    void get(std::set<Value>& values) {
        for (std::size_t left = count(); left > 0; --left) {
            Value value{};
            get(value);
            values.insert(value);
        }
    }
    template <typename Key, typename Value>
    void get(std::map<Key, Value>& values) {
        for (std::size_t left = count(); left > 0; --left) {
            Key key{};
            get(key);
            get(values[key]);
        }
    }
    template <typename Record>
        requires std::is_class_v<Record>
    void get(Record& record) {
        transfer(*this, record);
    }

    std::string_view bytes_;
};

template <typename Value>
std::string bytesOf(Value& value) {
    ByteWriter writer;
    writer(value);
    return writer.take();
}

/// Throws ForeignPackError.
template <typename Value>
Value valueOf(std::string_view bytes) {
    ByteReader reader(bytes);
    Value value{};
    reader(value);
    if (!reader.atEnd()) {
        throw ForeignPackError(damagedBytes);
    }
    return value;
}

} // namespace vornic
