#include "tests/support/ClickPack.h"

#include "VornicCore/audiofiles/WriteWav.h"

#include <cmath>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace vornic {

namespace {

/// Longer than a few blocks, so that a cycle that the graph skips costs a moment and not the click,
/// and gone before the next key.
std::vector<float> click() {
    std::vector<float> frames(1440);
    for (std::size_t frame = 0; frame < frames.size(); ++frame) {
        frames[frame] = 0.9f * std::exp(-static_cast<float>(frame) / 480.0f);
    }
    return frames;
}

} // namespace

void writeClickPack(const std::filesystem::path& packs) {
    const std::filesystem::path folder = packs / "spring";
    std::filesystem::create_directories(folder);
    for (const char* const name : {"regular-01.wav", "space-01.wav", "enter-01.wav",
                                   "backspace-01.wav", "modifier-01.wav"}) {
        writeWAV(click(), folder / name);
    }
    std::ofstream manifest(folder / "pack.json");
    manifest << R"({"id":"spring","name":"Click","character":"A click","credit":"Made here"})";
    manifest.close();
    if (!manifest || !std::filesystem::exists(folder / "regular-01.wav")) {
        throw std::runtime_error("the click pack could not be written to " + packs.string());
    }
}

} // namespace vornic
