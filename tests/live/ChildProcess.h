#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// A program that a test has started; killed at the end of its life.
class ChildProcess {
  public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    /// Starts `command` with `environment` added to this process's; its output goes to `log`.
    ChildProcess(std::vector<std::string> command, const Environment& environment,
                 const std::string& log);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Sends `signal`.
    void send(int signal) const;

    /// Sends `signal` and waits for the end.
    void end(int signal);

    /// Its process id; -1 once it has been waited for.
    pid_t id() const { return process_; }

    /// Whether it has not ended yet.
    bool runs() const;

    /// Waits for the end; the exit status, or -1 when a signal ended it.
    int wait();

  private:
    pid_t process_ = -1;
};

} // namespace vornic
