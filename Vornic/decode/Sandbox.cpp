#include "Vornic/decode/Sandbox.h"

#include <linux/close_range.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <memory>

namespace vornic {

namespace {

using Filter = std::unique_ptr<void, decltype([](void* filter) { seccomp_release(filter); })>;

bool limit(decltype(RLIMIT_AS) resource, rlim_t most) {
    const rlimit limits{most, most};
    return setrlimit(resource, &limits) == 0;
}

/// Far more than a recording needs, and little enough to do no harm.
bool limitResources() {
    constexpr rlim_t memory = rlim_t{1} << 30U; // bytes
    constexpr rlim_t processorTime = 120;       // seconds
    return limit(RLIMIT_AS, memory) && limit(RLIMIT_CPU, processorTime) && limit(RLIMIT_FSIZE, 0) &&
           limit(RLIMIT_CORE, 0);
}

/// A call that is allowed as it stands.
bool allow(const Filter& filter, int call) {
    return seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0) == 0;
}

/// A call that is allowed on one descriptor.
bool allowOn(const Filter& filter, int call, int descriptor) {
    return seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 1,
                            SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(descriptor))) == 0;
}

/// A call whose third argument, the protection of memory, must not let it be executed.
bool allowWithoutExecution(const Filter& filter, int call) {
    return seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 1,
                            SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)) == 0;
}

/// What the libraries try and can do without. libsndfile looks for a second part of a file by its
/// name.
bool refuse(const Filter& filter, int call) {
    return seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(EACCES), call, 0) == 0;
}

bool forbidTheRest() {
    const Filter filter(seccomp_init(SCMP_ACT_KILL_PROCESS));
    if (!filter) {
        return false;
    }
    for (const int call : {SCMP_SYS(read), SCMP_SYS(pread64), SCMP_SYS(lseek), SCMP_SYS(close)}) {
        if (!allowOn(filter, call, receivedFile)) {
            return false;
        }
    }
    for (const int call :
         {SCMP_SYS(brk), SCMP_SYS(munmap), SCMP_SYS(mremap), SCMP_SYS(madvise), SCMP_SYS(futex),
          SCMP_SYS(exit), SCMP_SYS(exit_group), SCMP_SYS(rt_sigreturn), SCMP_SYS(restart_syscall),
          SCMP_SYS(clock_gettime), SCMP_SYS(getrandom), SCMP_SYS(sysinfo)}) {
        if (!allow(filter, call)) {
            return false;
        }
    }
    return allowOn(filter, SCMP_SYS(recvmsg), STDIN_FILENO) &&
           allowOn(filter, SCMP_SYS(write), STDOUT_FILENO) &&
           allowWithoutExecution(filter, SCMP_SYS(mmap)) &&
           allowWithoutExecution(filter, SCMP_SYS(mprotect)) && refuse(filter, SCMP_SYS(open)) &&
           refuse(filter, SCMP_SYS(openat)) && refuse(filter, SCMP_SYS(sched_getaffinity)) &&
           seccomp_load(filter.get()) == 0;
}

} // namespace

bool enterSandbox() {
    return limitResources() && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           close_range(STDERR_FILENO + 1, UINT_MAX, 0) == 0 && forbidTheRest();
}

} // namespace vornic
