#include "tests/support/ClickPack.h"

#include "VornicCore/recordings/WriteWav.h"

#include <cmath>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace vornic {

namespace {

/// Short enough to be over before the next key, and gone before a room could add to it.
std::vector<float> click() {
    std::vector<float> frames(480);
    for (std::size_t frame = 0; frame < frames.size(); ++frame) {
        frames[frame] = 0.9f * std::exp(-static_cast<float>(frame) / 48.0f);
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
