#include "VornicCore/packs/Manifest.h"

#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/base/ReadFile.h"

#include <stdexcept>
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

} // namespace

std::optional<Manifest> Manifest::read(const std::filesystem::path& file) {
    try {
        return decodeJson<Manifest>(readTextFile(file, largestManifest));
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

} // namespace vornic
