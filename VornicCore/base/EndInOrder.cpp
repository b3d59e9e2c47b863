#include "VornicCore/base/EndInOrder.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

namespace vornic {

namespace {

const char* programName = "vornic";

/// Without memory of its own: there may be none.
void say(const char* text) {
    [[maybe_unused]] const ssize_t ignored = ::write(STDERR_FILENO, text, std::strlen(text));
}

[[noreturn]] void endUnexpected() {
    if (const std::exception_ptr error = std::current_exception()) {
        try {
            std::rethrow_exception(error);
        } catch (const std::bad_alloc&) {
            endWith("There is not enough memory.");
        } catch (const std::exception& problem) {
            endWith(problem.what());
        } catch (...) {
            endWith("Something went wrong that has no name.");
        }
    }
    endWith("Something went wrong.");
}

/// Sockets, timers, fonts and drivers of a run with windows take some forty.
constexpr std::size_t neededDescriptors = 96;
constexpr rlim_t neededAddresses = rlim_t{1} << 30U;

} // namespace

void endInOrder(const char* name) {
    programName = name;
    std::set_terminate(endUnexpected);
    std::signal(SIGXFSZ, SIG_IGN);
}

void endWith(const char* message) {
    say(programName);
    say(": ");
    say(message);
    say("\n");
    ::_exit(EXIT_FAILURE);
}

void requireRoom(bool windows) {
    std::array<int, neededDescriptors> opened{};
    std::size_t count = ::pipe(opened.data()) == 0 ? 2 : 0;
    // Copies of one descriptor take as much room as files would, and open nothing.
    while (count > 0 && count < opened.size()) {
        const int descriptor = ::fcntl(opened[0], F_DUPFD_CLOEXEC, 0);
        if (descriptor < 0) {
            break;
        }
        opened[count++] = descriptor;
    }
    for (std::size_t each = 0; each < count; ++each) {
        ::close(opened[each]);
    }
    if (count < opened.size()) {
        endWith("It may open too few files here: raise the limit (ulimit -n) to 256 or more.");
    }
    rlimit addresses{};
    if (windows && ::getrlimit(RLIMIT_AS, &addresses) == 0 &&
        addresses.rlim_cur < neededAddresses) {
        endWith("It may use too little address space here: raise the limit (ulimit -v) to "
                "1048576 KiB or more.");
    }
}

} // namespace vornic
