#include "packs/recorded/PackFiles.h"

#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/base/ReplaceFile.h"

#include <nlohmann/json.hpp>

#include <span>
#include <string>
#include <system_error>

namespace vornic::packs {

namespace fs = std::filesystem;

namespace {

// "regular-01.wav" for the first regular press.
std::string strokeName(std::string_view word, std::size_t number) {
    std::string name(word);
    name += number < 10 ? "-0" : "-";
    name += std::to_string(number);
    name += ".wav";
    return name;
}

} // namespace

bool writeStrokes(const std::vector<std::vector<float>>& strokes, std::string_view word,
                  const fs::path& folder) {
    std::size_t number = 0;
    for (const std::vector<float>& stroke : strokes) {
        const fs::path file = folder / strokeName(word, ++number);
        writeWAV(stroke, file);
        std::error_code error;
        if (fs::file_size(file, error) != 44 + 2 * stroke.size() || error) {
            return false;
        }
    }
    return true;
}

bool writeManifest(const Manifest& manifest, const fs::path& folder) {
    const nlohmann::ordered_json json = {{"id", manifest.id},
                                         {"name", manifest.name},
                                         {"character", manifest.character},
                                         {"credit", manifest.credit}};
    const std::string text = json.dump(2) + "\n";
    return replaceFile(folder / "pack.json", std::as_bytes(std::span(text)));
}

} // namespace vornic::packs
