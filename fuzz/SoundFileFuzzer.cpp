#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/FuzzFolder.h"

#include <algorithm>
#include <cmath>

/// Whatever the file holds, it is finite sound of a bearable length or nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vornic::FuzzFolder folder;
    const auto samples = vornic::loadAudio(folder.put("sound", data, size));
    if (samples) {
        vornic::require(static_cast<double>(samples->size()) <=
                            vornic::longestAudioSeconds * 48000 + 48000,
                        "no longer than ten minutes");
        vornic::require(std::ranges::all_of(*samples, [](float x) { return std::isfinite(x); }),
                        "finite sound");
    }
    return 0;
}
