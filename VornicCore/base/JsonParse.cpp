#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/JsonText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

namespace {

using nlohmann::json;

/// Builds the document from the parser's events, because the parser's own builder keeps the last of
/// equal members in silence and knows no limits. The function names are the parser's.
class DocumentBuilder {
  public:
    explicit DocumentBuilder(const JsonLimits& limits) : limits_(limits) {}

    json take() { return std::move(document_); }

    bool null() { return add(nullptr); }
    bool boolean(bool value) { return add(value); }
    bool number_integer(std::int64_t value) { return add(value); }
    bool number_unsigned(std::uint64_t value) { return add(value); }
    bool number_float(double value, const std::string& /*text*/) { return add(value); }
    bool string(std::string& value) { return add(std::move(value)); }
    bool binary(json::binary_t& /*value*/) { return false; } // JSON has none.

    bool start_object(std::size_t /*size*/) { return open(json::object()); }
    bool start_array(std::size_t /*size*/) { return open(json::array()); }
    bool end_object() { return close(); }
    bool end_array() { return close(); }

    bool key(std::string& name) {
        json& object = *open_.back().container;
        open_.back().key = name;
        open_.back().hasKey = true;
        if (!limits_.lastOfEqualMembers && object.contains(name)) {
            throw DecodeError(path(), "this member occurs twice");
        }
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const json::exception& error) {
        // The message begins with the library's name for the error, in brackets.
        std::string_view message = error.what();
        message.remove_prefix(std::min(message.find("] ") + 2, message.size()));
        throw DecodeError(path(), "not valid JSON, " + printable(message, 160));
    }

  private:
    struct Open {
        json* container;
        /// Of an object: the member that comes next.
        std::string key;
        bool hasKey;
    };

    bool add(json value) {
        put(std::move(value));
        return true;
    }

    bool open(json container) {
        if (open_.size() == limits_.depth) {
            throw DecodeError(path(),
                              "nested more than " + std::to_string(limits_.depth) + " levels deep");
        }
        // A container that is open does not move: its parent grows only when it is closed.
        open_.push_back({put(std::move(container)), {}, false});
        return true;
    }

    bool close() {
        open_.pop_back();
        return true;
    }

    json* put(json value) {
        if (limits_.stop.stop_requested()) {
            throw DecodeError("", "the reading was cancelled");
        }
        if (++count_ > limits_.values) {
            throw DecodeError("", "more than " + std::to_string(limits_.values) + " values");
        }
        if (open_.empty()) {
            document_ = std::move(value);
            return &document_;
        }
        json& parent = *open_.back().container;
        if (parent.is_array()) {
            parent.push_back(std::move(value));
            return &parent.back();
        }
        json& member = parent[open_.back().key];
        member = std::move(value);
        return &member;
    }

    /// Where the parser is, or, after an error, where it was last.
    std::string path() const {
        std::string path;
        for (const Open& each : open_) {
            if (each.container->is_array()) {
                const bool isCurrent = &each == &open_.back();
                path = elementPath(path, each.container->size() - (isCurrent ? 0 : 1));
            } else if (each.hasKey) {
                path = memberPath(path, each.key);
            }
        }
        return path;
    }

    JsonLimits limits_;
    json document_;
    std::vector<Open> open_;
    std::size_t count_ = 0;
};

} // namespace

json parseJson(std::string_view text, const JsonLimits& limits) {
    if (text.empty()) {
        throw DecodeError("", "it is empty");
    }
    // The parser skips the mark, and takes a zero byte for the end of the text.
    if (text.starts_with("\xEF\xBB\xBF")) {
        throw DecodeError("", "it begins with a byte order mark");
    }
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {
        throw DecodeError("", "a zero byte at offset " + std::to_string(zero));
    }
    DocumentBuilder builder(limits);
    json::sax_parse(text, &builder);
    return builder.take();
}

} // namespace vornic
