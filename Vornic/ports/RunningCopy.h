#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// What the running copy has to say to a command.
struct ControlAnswer {
    /// The exit status of the command that asked: 0, or 1 if it was not done.
    int status = 0;
    /// For the terminal, without a newline at the end; may be empty.
    std::string text;

    bool operator==(const ControlAnswer&) const = default;
};

/// The one copy of the program that runs in a session, and how others ask things of it. Main
/// thread.
class RunningCopy {
  public:
    /// A command as it stands on the command line behind the program's name: {"board", "next"}.
    using Words = std::vector<std::string>;
    using Handler = std::function<ControlAnswer(const Words&)>;

    enum class Claim : std::uint8_t {
        /// This process is the running copy from now on.
        claimed,
        /// Another one is.
        taken,
        /// The session has no place where that could be known.
        unavailable,
    };

    RunningCopy() = default;
    RunningCopy(const RunningCopy&) = delete;
    RunningCopy& operator=(const RunningCopy&) = delete;
    virtual ~RunningCopy() = default;

    /// Tries to become the running copy. Commands that arrive before `answer` wait.
    virtual Claim claim() = 0;

    /// Answers commands through `handler`, which is called on the main thread until this object
    /// ends.
    virtual void answer(Handler handler) = 0;

    /// Asks the running copy, for some seconds at most. Says so when there is none or it does not
    /// answer.
    virtual ControlAnswer ask(const Words& words) = 0;
};

} // namespace vornic
