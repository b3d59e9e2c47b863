#include "Vornic/decode/AvFile.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/FuzzFolder.h"

#include <vector>

/// Whatever a phone's recording holds, the decoder comes to an end with sound or without.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vornic::FuzzFolder folder;
    vornic::AvFile file;
    if (!file.open(folder.put("recording", data, size))) {
        return 0;
    }
    vornic::require(file.rate() > 0, "sound has a rate");
    std::vector<float> mono;
    // A few bytes may claim hours.
    constexpr std::size_t most = 48000 * 60;
    std::size_t frames = 0;
    while (frames < most && file.read(mono) == vornic::AvFile::Next::block) {
        frames += mono.size() + 1;
    }
    return 0;
}
