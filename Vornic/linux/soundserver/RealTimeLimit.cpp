#include "Vornic/linux/soundserver/RealTimeLimit.h"

#include <sched.h>
#include <sys/resource.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace vornic {

namespace {

// A signal handler can reach nothing else.
std::atomic<bool> exceeded{false};
static_assert(std::atomic<bool>::is_always_lock_free);

/// The first limit sends the signal, the second one kills: half way there is time to act on it.
void setFirstLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_RTTIME, &limit) != 0 || limit.rlim_max == RLIM_INFINITY) {
        return;
    }
    const rlim_t half = limit.rlim_max / 2;
    if (limit.rlim_cur > half) {
        limit.rlim_cur = half;
        setrlimit(RLIMIT_RTTIME, &limit);
    }
}

/// The kernel sends the signal to the thread that has run for too long, and moves the first limit
/// on by a second, beyond the second one.
void giveUp(int /*signal*/) {
    const int error = errno;
    const sched_param ordinary{};
    sched_setscheduler(0, SCHED_OTHER, &ordinary);
    setFirstLimit();
    exceeded = true;
    errno = error;
}

bool handleSignal() {
    struct sigaction action{};
    action.sa_handler = giveUp;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    return sigaction(SIGXCPU, &action, nullptr) == 0;
}

} // namespace

void RealTimeLimit::soften() {
    static const bool handled = handleSignal();
    if (handled) {
        setFirstLimit();
    }
}

bool RealTimeLimit::wasExceeded() {
    return exceeded;
}

} // namespace vornic
