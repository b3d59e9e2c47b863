#pragma once

#include <cstddef>
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

/// The one copy of the program that runs in a session, and how others ask things of it.
/// Thread: main, as everything here.
class RunningCopy {
  public:
    /// A command as it stands on the command line behind the program's name: {"board", "next"}.
    using Words = std::vector<std::string>;
    /// Takes the answer, once, at once or later; does nothing after this object's end.
    using Reply = std::function<void(const ControlAnswer&)>;
    using Handler = std::function<void(const Words&, Reply)>;

    /// What a command may be at most: far more than any of ours. More is refused before anything
    /// looks at it.
    static constexpr std::size_t mostWords = 16;
    static constexpr std::size_t longestWord = 8192; // bytes; a path fits

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
