#include "Vornic/decode/AvFile.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/FuzzFolder.h"
#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace {

void read(vornic::AudioStream* file) {
    std::vector<float> mono;
    // A few bytes may claim hours.
    constexpr std::size_t most = 48000 * 60;
    std::size_t frames = 0;
    while (file != nullptr && frames < most &&
           file->read(mono) == vornic::AudioStream::Next::block) {
        frames += mono.size() + 1;
    }
}

} // namespace

/// Whatever a phone's recording holds, the decoder comes to an end with sound or without.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vornic::FuzzFolder folder;
    const int descriptor =
        ::open(std::string(folder.put("recording", data, size)).c_str(), O_RDONLY | O_CLOEXEC);
    vornic::require(descriptor >= 0, "the fuzzer's own file is there");
    {
        const auto file = vornic::openAvFile(descriptor);
        vornic::require(file == nullptr || file->rate() > 0, "sound has a rate");
        read(file.get());
    }
    ::close(descriptor);
    return 0;
}
