#include "Vornic/recording/HelperProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <string>

namespace vornic {

namespace {

using namespace std::chrono_literals;

constexpr int pipeBytes = 1 << 20; // as much as everybody may have
/// How often a wait looks whether it is to stop, and how long the helper may think in silence.
constexpr auto lookInterval = 50ms;
constexpr auto longestSilence = 20s;

/// Starts `program` with `input` and `output` as its standard input and output, and nothing else of
/// this process: no environment, no signals blocked. -1 where that fails.
pid_t spawn(std::string program, int input, int output) {
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes{};
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    std::array<char*, 2> arguments{program.data(), nullptr};
    std::array<char*, 1> environment{nullptr};
    pid_t process = -1;
    if (posix_spawn(&process, program.c_str(), &actions, &attributes, arguments.data(),
                    environment.data()) != 0) {
        process = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

void closeIfOpen(int descriptor) {
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

} // namespace

HelperProcess::HelperProcess(const std::filesystem::path& program) {
    std::array<int, 2> sockets{-1, -1};
    std::array<int, 2> pipe{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) == 0 &&
        ::pipe2(pipe.data(), O_CLOEXEC) == 0) {
        // Where many wait for the processor, few long turns are sooner done than many short ones.
        ::fcntl(pipe[1], F_SETPIPE_SZ, pipeBytes);
        process_ = spawn(program.string(), sockets[1], pipe[1]);
        isFree_ = process_ > 0;
    }
    closeIfOpen(sockets[1]);
    closeIfOpen(pipe[1]);
    requests_ = sockets[0];
    output_ = pipe[0];
}

HelperProcess::~HelperProcess() {
    closeIfOpen(requests_);
    closeIfOpen(output_);
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

bool HelperProcess::give(HelperDuty duty, int descriptor) {
    isFree_ = false;
    char letter = static_cast<char>(duty);
    iovec content{&letter, sizeof(letter)};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* const head = CMSG_FIRSTHDR(&message);
    head->cmsg_level = SOL_SOCKET;
    head->cmsg_type = SCM_RIGHTS;
    head->cmsg_len = CMSG_LEN(sizeof(int));
    std::memcpy(CMSG_DATA(head), &descriptor, sizeof(int));
    return process_ > 0 && ::sendmsg(requests_, &message, MSG_NOSIGNAL) == 1;
}

std::size_t HelperProcess::read(std::span<std::byte> bytes, const std::stop_token& stop) const {
    std::size_t got = 0;
    while (got < bytes.size() && process_ > 0 && waitForOutput(stop)) {
        const ssize_t count = ::read(output_, bytes.data() + got, bytes.size() - got);
        if (count > 0) {
            got += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            break;
        }
    }
    return got;
}

bool HelperProcess::waitForOutput(const std::stop_token& stop) const {
    for (auto silence = 0ms; silence < longestSilence; silence += lookInterval) {
        if (stop.stop_requested()) {
            return false;
        }
        pollfd ready{output_, POLLIN, 0};
        if (::poll(&ready, 1, static_cast<int>(lookInterval.count())) > 0) {
            return true;
        }
    }
    return false;
}

} // namespace vornic
