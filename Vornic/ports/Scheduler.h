#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace vornic {

/// Runs work on the main thread. Tests use one whose time they advance. Thread: main, but `post`:
/// any.
class Scheduler {
  public:
    /// A pending or repeating call; destroying it cancels the call. Thread: main.
    class Timer {
      public:
        Timer() = default;
        Timer(const Timer&) = delete;
        Timer& operator=(const Timer&) = delete;
        virtual ~Timer() = default;
    };

    Scheduler() = default;
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;
    virtual ~Scheduler() = default;

    /// Runs `work` once on the main thread, after everything posted before it. Thread: any.
    virtual void post(std::function<void()> work) = 0;

    /// Runs `work` once, `delay` from now. Thread: main.
    [[nodiscard]] virtual std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                                       std::function<void()> work) = 0;

    /// Runs `work` every `interval`, first one interval from now. Thread: main.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                                       std::function<void()> work) = 0;
};

} // namespace vornic
