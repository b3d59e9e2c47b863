#include "VornicCore/base/Base64.h"

#include <nettle/base64.h>

#include <cstdint>

namespace vornic {

namespace {

constexpr std::size_t bytesPerGroup = BASE64_BINARY_BLOCK_SIZE;
constexpr std::size_t lettersPerGroup = BASE64_TEXT_BLOCK_SIZE;

} // namespace

std::string base64Encoded(std::span<const std::byte> bytes) {
    std::string text((bytes.size() + bytesPerGroup - 1) / bytesPerGroup * lettersPerGroup, '\0');
    base64_encode_raw(text.data(), bytes.size(),
                      reinterpret_cast<const std::uint8_t*>(bytes.data()));
    return text;
}

std::optional<std::vector<std::byte>> base64Decoded(std::string_view text) {
    // The decoder skips white space.
    if (text.find_first_of(" \t\n\v\f\r") != std::string_view::npos) {
        return std::nullopt;
    }
    std::vector<std::byte> bytes(BASE64_DECODE_LENGTH(text.size()));
    std::size_t count = bytes.size();
    base64_decode_ctx context{};
    base64_decode_init(&context);
    if (base64_decode_update(&context, &count, reinterpret_cast<std::uint8_t*>(bytes.data()),
                             text.size(), text.data()) == 0 ||
        base64_decode_final(&context) == 0) {
        return std::nullopt;
    }
    bytes.resize(count);
    return bytes;
}

} // namespace vornic
