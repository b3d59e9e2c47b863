#include "VornicCore/packs/Manifest.h"

#include "VornicCore/base/JsonCodec.h"

#include <fstream>
#include <string>
#include <tuple>

namespace vornic {

template <>
struct JsonRecord<Manifest> {
    static constexpr auto members = std::tuple{
        JsonMember{"id", &Manifest::id}, JsonMember{"name", &Manifest::name},
        JsonMember{"character", &Manifest::character}, JsonMember{"credit", &Manifest::credit}};
};

namespace {

// A manifest is four short strings; anything larger is some other file.
constexpr std::uintmax_t largestManifest = 65536;

std::optional<std::string> contents(const std::filesystem::path& file) {
    std::error_code error;
    // Opening a pipe would wait for a writer that never comes.
    if (!std::filesystem::is_regular_file(file, error)) {
        return std::nullopt;
    }
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || size > largestManifest) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(text.data(), static_cast<std::streamsize>(size))) {
        return std::nullopt;
    }
    return text;
}

} // namespace

std::optional<Manifest> Manifest::read(const std::filesystem::path& file) {
    const std::optional<std::string> text = contents(file);
    if (!text) {
        return std::nullopt;
    }
    try {
        return decodeJson<Manifest>(*text);
    } catch (const DecodeError&) {
        return std::nullopt;
    }
}

} // namespace vornic
