#include "VornicCore/base/JsonDocument.h"
#include "VornicCore/base/JsonError.h"
#include "VornicCore/base/JsonNumber.h"
#include "VornicCore/base/JsonText.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstddef>

namespace vornic {

namespace {

using nlohmann::json;

class Writer {
  public:
    std::string take() { return std::move(text_); }

    void write(const json& value, const std::string& path) {
        switch (value.type()) {
        case json::value_t::object:
            writeObject(value, path);
            break;
        case json::value_t::array:
            writeArray(value, path);
            break;
        case json::value_t::number_float:
            writeNumber(value.get<double>(), path);
            break;
        default:
            writeScalar(value, path);
            break;
        }
    }

  private:
    void writeObject(const json& object, const std::string& path) {
        open('{');
        std::size_t written = 0;
        for (const auto& [name, value] : object.items()) {
            const std::string memberAt = memberPath(path, name);
            startItem(written++);
            writeScalar(name, memberAt);
            text_ += ": ";
            write(value, memberAt);
        }
        close('}', written);
    }

    void writeArray(const json& array, const std::string& path) {
        open('[');
        std::size_t written = 0;
        for (const json& value : array) {
            startItem(written);
            write(value, elementPath(path, written));
            ++written;
        }
        close(']', written);
    }

    void writeNumber(double value, const std::string& path) {
        if (!std::isfinite(value)) {
            throw EncodeError(path, "not a finite number");
        }
        text_ += numberText(value);
    }

    void writeScalar(const json& value, const std::string& path) {
        try {
            text_ += value.dump();
        } catch (const json::type_error&) {
            throw EncodeError(path, "not valid UTF-8");
        }
    }

    void open(char bracket) {
        text_ += bracket;
        ++level_;
    }

    void startItem(std::size_t index) {
        if (index > 0) {
            text_ += ',';
        }
        startLine();
    }

    void close(char bracket, std::size_t written) {
        --level_;
        if (written > 0) {
            startLine();
        }
        text_ += bracket;
    }

    void startLine() {
        text_ += '\n';
        text_.append(2 * level_, ' ');
    }

    std::string text_;
    std::size_t level_ = 0;
};

} // namespace

std::string writeJson(const json& document) {
    Writer writer;
    writer.write(document, {});
    return writer.take();
}

} // namespace vornic
