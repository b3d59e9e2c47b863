#include "VornicCore/keys/LayoutKey.h"

#include <array>
#include <charconv>

namespace vornic {

namespace {

// The shortest text that reads back as the same double, with ".0" where it would be a whole number.
std::string decimal(double value) {
    std::array<char, 32> text{};
    char* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    std::string result(text.data(), end);
    if (result.find_first_not_of("-0123456789") == std::string::npos) {
        result += ".0";
    }
    return result;
}

} // namespace

std::string LayoutKey::id() const {
    return std::to_string(code.value_or(-1)) + "-" + decimal(x) + "-" + decimal(y);
}

} // namespace vornic
