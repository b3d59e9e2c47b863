#include "VornicCore/base/Uuid.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace vornic {

namespace {

constexpr std::size_t textLength = 36;

bool dashStandsAt(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

} // namespace

Uuid Uuid::random() {
    Uuid fresh;
    if (getentropy(fresh.bytes_.data(), fresh.bytes_.size()) != 0) {
        throw std::system_error(errno, std::generic_category(), "no random numbers for an id");
    }
    // Version 4, variant 1, as RFC 9562 has them.
    fresh.bytes_[6] = static_cast<std::uint8_t>((fresh.bytes_[6] & 0x0FU) | 0x40U);
    fresh.bytes_[8] = static_cast<std::uint8_t>((fresh.bytes_[8] & 0x3FU) | 0x80U);
    return fresh;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != textLength) {
        return std::nullopt;
    }
    Uuid parsed;
    std::size_t position = 0;
    for (std::uint8_t& byte : parsed.bytes_) {
        if (dashStandsAt(position)) {
            if (text[position] != '-') {
                return std::nullopt;
            }
            ++position;
        }
        const std::string_view digits = text.substr(position, 2);
        const char* const end = digits.data() + digits.size();
        if (std::from_chars(digits.data(), end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        position += 2;
    }
    return parsed;
}

std::string Uuid::text() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : bytes_) {
        if (dashStandsAt(text.size())) {
            text += '-';
        }
        text += digits[byte >> 4U];
        text += digits[byte & 0x0FU];
    }
    return text;
}

} // namespace vornic
