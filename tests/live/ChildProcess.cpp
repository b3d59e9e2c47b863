#include "tests/live/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace vornic {

ChildProcess::ChildProcess(std::vector<std::string> command, const Environment& environment,
                           const std::string& log) {
    std::vector<std::string> variables;
    for (char** inherited = environ; *inherited != nullptr; ++inherited) {
        const std::string_view variable = *inherited;
        const std::string_view name = variable.substr(0, variable.find('='));
        bool replaced = false;
        for (const auto& [added, value] : environment) {
            replaced = replaced || added == name;
        }
        if (!replaced) {
            variables.emplace_back(variable);
        }
    }
    for (const auto& [name, value] : environment) {
        variables.push_back(name);
        variables.back().append("=").append(value);
    }
    const auto pointers = [](std::vector<std::string>& strings) {
        std::vector<char*> result;
        result.reserve(strings.size() + 1);
        for (std::string& string : strings) {
            result.push_back(string.data());
        }
        result.push_back(nullptr);
        return result;
    };
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0600);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    const int error = posix_spawnp(&process_, command.front().c_str(), &actions, nullptr,
                                   pointers(command).data(), pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        process_ = -1;
        throw std::runtime_error(command.front() + ": " + std::strerror(error));
    }
}

ChildProcess::~ChildProcess() {
    end(SIGKILL);
}

void ChildProcess::send(int signal) const {
    if (process_ > 0) {
        kill(process_, signal);
    }
}

void ChildProcess::end(int signal) {
    send(signal);
    wait();
}

bool ChildProcess::runs() const {
    siginfo_t ended{};
    return process_ > 0 &&
           waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid == 0;
}

int ChildProcess::wait() {
    if (process_ <= 0) {
        return -1;
    }
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace vornic
