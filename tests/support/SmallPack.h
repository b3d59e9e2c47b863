#pragma once

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/support/ScratchFolder.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace vornic {

/// A stroke of 100 ms that begins and ends at rest; each pitch is another one.
inline std::vector<float> packStroke(double pitch) {
    std::vector<float> stroke(4800);
    for (std::size_t at = 96; at < 4000; ++at) {
        const auto time = static_cast<double>(at - 96);
        stroke[at] = static_cast<float>(0.5 * std::exp(-time / 500) * std::sin(time * pitch));
    }
    return stroke;
}

/// Writes a pack of another program: so many keys, the first one's code as given, each with a press
/// and a release in a file of its own, and a file that is missing.
inline void writeSmallPack(const ScratchFolder& folder, const std::string& place,
                           const std::string& name, int keys = 1) {
    std::string defines = R"("88": "gone.wav")";
    folder.write(place + "/config.json", "");
    for (int key = 0; key < keys; ++key) {
        const std::string code = std::to_string(30 + key);
        const std::string press = code + ".wav";
        const std::string release = code + "-up.wav";
        defines +=
            ", \"" + code + "\": \"" + press + "\", \"" + code + "-up\": \"" + release + "\"";
        writeWAV(packStroke(0.1 + 0.002 * key), folder / (place + "/" + press));
        writeWAV(packStroke(0.4 + 0.002 * key), folder / (place + "/" + release));
    }
    folder.write(place + "/config.json",
                 "{\"name\": \"" + name + R"(", "key_define_type": "multi", "sound": "30.wav", )" +
                     R"("includes_numpad": false, "defines": {)" + defines + "}}");
}

} // namespace vornic
