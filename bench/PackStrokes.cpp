#include "bench/PackStrokes.h"

#include "VornicCore/audiofiles/LoadAudio.h"

#include <filesystem>
#include <utility>

namespace vornic::bench {

std::vector<std::vector<float>> strokesOf(const SoundPack& pack, const std::string& keyClass) {
    std::vector<std::filesystem::path> files;
    if (keyClass == "release") {
        files = pack.releaseFiles;
    }
    for (const auto& [here, presses] : pack.files) {
        if (packFileWord(here) == keyClass) {
            files = presses;
        }
    }
    std::vector<std::vector<float>> strokes;
    for (const auto& file : files) {
        if (auto samples = loadAudio(file)) {
            strokes.push_back(*std::move(samples));
        }
    }
    return strokes;
}

} // namespace vornic::bench
