// vornic-keys PROGRAM [OWNER]: reads keyboards for PROGRAM alone, which belongs to root (OWNER, a
// number, in tests). Started by the system for whoever connects to its socket, and ends by itself.

#include "Vornic/linux/reader/KeyReader.h"
#include "VornicCore/base/EndInOrder.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <systemd/sd-daemon.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

int main(int argc, char** argv) {
    vornic::endInOrder("vornic-keys");
    // What it reads stays out of core files and of sight.
    const rlimit none{};
    ::setrlimit(RLIMIT_CORE, &none);
    ::prctl(PR_SET_DUMPABLE, 0);
    if (argc < 2 || argc > 3 || ::sd_listen_fds(1) != 1) {
        std::fputs("usage: vornic-keys PROGRAM, with one socket from the system\n", stderr);
        return 2;
    }
    try {
        const auto owner = argc == 3 ? std::strtoul(argv[2], nullptr, 10) : 0;
        vornic::KeyReader reader(SD_LISTEN_FDS_START, std::filesystem::canonical(argv[1]).string(),
                                 static_cast<uid_t>(owner));
        reader.run();
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "vornic-keys: %s\n", problem.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
