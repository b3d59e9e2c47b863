#include "VornicCore/base/JsonText.h"

#include <algorithm>

namespace vornic {

namespace {

bool isPlainName(std::string_view name) {
    constexpr std::size_t longest = 40;
    return !name.empty() && name.size() <= longest && std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_' || c == '-' || c == '/';
    });
}

} // namespace

std::string printable(std::string_view text, std::size_t longest) {
    std::string result(text.substr(0, longest));
    std::ranges::replace_if(result, [](char c) { return c < ' ' || c > '~'; }, '?');
    if (text.size() > longest) {
        result += "...";
    }
    return result;
}

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    result += printable(text);
    result += '"';
    return result;
}

std::string memberPath(const std::string& path, std::string_view name) {
    const std::string step = isPlainName(name) ? std::string(name) : inQuotes(name);
    return path.empty() ? step : path + "." + step;
}

std::string elementPath(const std::string& path, std::size_t index) {
    return path + "[" + std::to_string(index) + "]";
}

} // namespace vornic
