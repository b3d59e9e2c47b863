#include "VornicCore/recordings/Manifest.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <utility>

namespace vornic {

namespace {

// A manifest is four short strings; anything larger is some other file.
constexpr std::uintmax_t largestManifest = 65536;

std::optional<std::string> textOf(const nlohmann::json& object, const char* key) {
    const auto member = object.find(key);
    if (member == object.end() || !member->is_string()) {
        return std::nullopt;
    }
    return member->get<std::string>();
}

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
    const nlohmann::json object = nlohmann::json::parse(*text, nullptr, false);
    if (!object.is_object()) {
        return std::nullopt;
    }
    auto id = textOf(object, "id");
    auto name = textOf(object, "name");
    auto character = textOf(object, "character");
    auto credit = textOf(object, "credit");
    if (!id || !name || !character || !credit) {
        return std::nullopt;
    }
    return Manifest{.id = *std::move(id),
                    .name = *std::move(name),
                    .character = *std::move(character),
                    .credit = *std::move(credit)};
}

} // namespace vornic
