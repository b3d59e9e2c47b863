#include "tests/support/SystemCallFilter.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>

namespace vornic {

namespace {

// What the copy writes to the pipe: a system call's number, or one of these.
constexpr int finished = -1;
constexpr int noFilter = -2;

/// Where the copy reports to. Only the signal handler of the copy needs it here.
int reportTo = -1;

[[noreturn]] void report(int what) noexcept {
    const auto written = ::write(reportTo, &what, sizeof what);
    _exit(written == sizeof what ? 0 : 1);
}

void reportSystemCall(int /*signal*/, siginfo_t* info, void* /*context*/) {
    report(info->si_syscall);
}

bool forbidSystemCalls() {
#if defined(__x86_64__)
    constexpr std::uint32_t architecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
    constexpr std::uint32_t architecture = AUDIT_ARCH_AARCH64;
#endif
    const auto load = [](std::size_t offset) {
        return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
    };
    // Allowed: writing the report, ending, and returning from the signal handler. The lower half of
    // the first argument is the descriptor.
    std::array program = {
        load(offsetof(seccomp_data, arch)),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, architecture, 0, 6),
        load(offsetof(seccomp_data, nr)),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_exit_group, 5, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_rt_sigreturn, 4, 0),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_write, 0, 2),
        load(offsetof(seccomp_data, args)),
        sock_filter BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(reportTo), 1, 0),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        sock_filter BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter = {.len = program.size(), .filter = program.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

[[noreturn]] void runInCopy(const std::function<void()>& work) {
    struct sigaction action = {};
    action.sa_sigaction = reportSystemCall;
    action.sa_flags = SA_SIGINFO;
    if (::sigaction(SIGSYS, &action, nullptr) != 0 || !forbidSystemCalls()) {
        report(noFilter);
    }
    work();
    report(finished);
}

std::string describe(int number) {
    static const std::map<int, const char*> names = {
        {__NR_read, "read"},
        {__NR_write, "write"},
        {__NR_openat, "openat"},
        {__NR_close, "close"},
        {__NR_mmap, "mmap"},
        {__NR_munmap, "munmap"},
        {__NR_mprotect, "mprotect"},
        {__NR_madvise, "madvise"},
        {__NR_brk, "brk"},
        {__NR_ioctl, "ioctl"},
        {__NR_ppoll, "ppoll"},
        {__NR_sendmsg, "sendmsg"},
        {__NR_recvmsg, "recvmsg"},
        {__NR_futex, "futex"},
        {__NR_sched_yield, "sched_yield"},
        {__NR_nanosleep, "nanosleep"},
        {__NR_clock_nanosleep, "clock_nanosleep"},
        {__NR_clock_gettime, "clock_gettime"},
        {__NR_getpid, "getpid"},
        {__NR_gettid, "gettid"},
        {__NR_tgkill, "tgkill"},
        {__NR_getrandom, "getrandom"},
        {__NR_rt_sigaction, "rt_sigaction"},
        {__NR_rt_sigprocmask, "rt_sigprocmask"},
    };
    const auto name = names.find(number);
    return "system call " + std::to_string(number) +
           (name == names.end() ? "" : std::string(" (") + name->second + ")");
}

} // namespace

std::string forbiddenSystemCall(const std::function<void()>& work) {
    std::array<int, 2> ends = {};
    if (::pipe(ends.data()) != 0) {
        return std::string("no pipe: ") + std::strerror(errno);
    }
    const pid_t copy = ::fork();
    if (copy == 0) {
        reportTo = ends[1];
        runInCopy(work);
    }
    ::close(ends[1]);
    int reported = 0;
    ssize_t size = 0;
    do {
        size = copy < 0 ? 0 : ::read(ends[0], &reported, sizeof reported);
    } while (size < 0 && errno == EINTR);
    ::close(ends[0]);
    if (copy < 0) {
        return "no fork";
    }
    int status = 0;
    while (::waitpid(copy, &status, 0) < 0 && errno == EINTR) {
    }
    if (size != sizeof reported) {
        return WIFSIGNALED(status) ? "ended by signal " + std::to_string(WTERMSIG(status))
                                   : "ended with " + std::to_string(WEXITSTATUS(status));
    }
    if (reported == noFilter) {
        return "the kernel refused the filter";
    }
    return reported == finished ? std::string() : describe(reported);
}

} // namespace vornic
