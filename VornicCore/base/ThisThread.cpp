#include "VornicCore/base/ThisThread.h"

#include <pthread.h>
#include <sys/resource.h>

namespace vornic::ThisThread {

void setName(const char* name) {
#ifdef __APPLE__
    pthread_setname_np(name);
#else
    pthread_setname_np(pthread_self(), name);
#endif
}

void stepBack() {
#ifdef __linux__
    // There a thread has a niceness of its own. A third of the share of the others where they want
    // all there is; the whole machine where they do not.
    constexpr int niceness = 5;
    setpriority(PRIO_PROCESS, 0, niceness);
#endif
}

} // namespace vornic::ThisThread
