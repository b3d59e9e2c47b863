// Decodes the audio file that is its standard input: writes a DecodedHeader and then mono floats to
// its standard output. All files that others made come through here: a process of its own that can
// do nothing else, so that a hostile one harms nothing. Ends with 0 only when everything was
// decoded.

#ifdef VORNIC_LIBAV
#include "Vornic/decode/AvFile.h"
#endif
#include "Vornic/decode/Sandbox.h"
#include "Vornic/recording/DecodedHeader.h"
#include "VornicCore/audiofiles/SoundFile.h"

#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

namespace vornic {
namespace {

/// Without the standard library's streams, which ask about what they write to.
bool write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (written <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

std::unique_ptr<AudioStream> open(int descriptor) {
    std::unique_ptr<AudioStream> stream = openSoundFile(descriptor);
#ifdef VORNIC_LIBAV
    if (stream == nullptr) {
        stream = openAvFile(descriptor);
    }
#endif
    return stream;
}

bool decode() {
    const std::unique_ptr<AudioStream> stream = open(STDIN_FILENO);
    if (stream == nullptr) {
        return false;
    }
    DecodedHeader header;
    header.rate = stream->rate();
    header.seconds = stream->seconds().value_or(header.seconds);
    if (!write(std::as_bytes(std::span(&header, 1)))) {
        return false;
    }
    std::vector<float> mono;
    AudioStream::Next next = stream->read(mono);
    while (next == AudioStream::Next::block && write(std::as_bytes(std::span(mono)))) {
        next = stream->read(mono);
    }
    return next == AudioStream::Next::end;
}

} // namespace
} // namespace vornic

int main(int argc, char** /*argv*/) {
    if (argc != 1 || ::lseek(STDIN_FILENO, 0, SEEK_SET) != 0) {
        std::fputs("usage: vornic-decode < FILE\n", stderr);
        return EXIT_FAILURE;
    }
    const bool succeeded = vornic::enterSandbox() && vornic::decode();
    // Nothing of the libraries' own endings, which may ask for more than is allowed.
    _exit(succeeded ? EXIT_SUCCESS : EXIT_FAILURE);
}
