// Decodes an audio file that the program itself does not know: writes a DecodedHeader and then mono
// floats to its standard output. A process of its own, so that a hostile file harms nothing else;
// ends with 0 only when everything was decoded.
//
//   vornic-decode FILE

#include "Vornic/decode/AvFile.h"
#include "Vornic/recording/DecodedHeader.h"

#include <sys/resource.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

void limit(decltype(RLIMIT_AS) resource, rlim_t most) {
    const rlimit limits{most, most};
    setrlimit(resource, &limits);
}

template <typename Value>
bool write(const Value* values, std::size_t count) {
    return std::fwrite(values, sizeof(Value), count, stdout) == count;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: vornic-decode FILE\n", stderr);
        return EXIT_FAILURE;
    }
    // Far more than a recording needs, and little enough to do no harm.
    limit(RLIMIT_AS, rlim_t{1} << 30U);
    limit(RLIMIT_CPU, 120);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_CORE, 0);

    using vornic::AvFile;
    AvFile file;
    if (!file.open(argv[1])) {
        return EXIT_FAILURE;
    }
    vornic::DecodedHeader header;
    header.rate = file.rate();
    header.seconds = file.seconds();
    if (!write(&header, 1)) {
        return EXIT_FAILURE;
    }
    std::vector<float> mono;
    AvFile::Next next = file.read(mono);
    while (next == AvFile::Next::block && write(mono.data(), mono.size())) {
        next = file.read(mono);
    }
    return next == AvFile::Next::end && std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
