#pragma once

#include "Vornic/ports/Scheduler.h"
#include "VornicCore/base/Lifetime.h"

#include <functional>
#include <list>
#include <stop_token>
#include <thread>

namespace vornic {

/// Work that takes longer than the main thread may wait, one at a time, on a thread of its own.
/// Thread: main, the work itself excepted.
class BackgroundWork {
  public:
    /// What is to be done on the main thread once the work is done.
    using Finish = std::function<void()>;
    /// Runs on the other thread; ends early, with whatever result, when a stop is requested.
    using Work = std::function<Finish(const std::stop_token&)>;

    /// `scheduler` outlives it.
    explicit BackgroundWork(Scheduler& scheduler) : scheduler_(scheduler) {}
    /// Cancels, and waits for the end of what still runs.
    ~BackgroundWork() = default;
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;

    /// Begins `work`, in place of what is running, which is cancelled. What it returns is called on
    /// the main thread.
    void start(Work work);

    /// From `start` until what the work has returned is called, or the work is cancelled.
    bool running() const { return running_; }

    /// Asks the work to stop; nothing it returns is called any more. Waits for nothing.
    void cancel();

  private:
    Scheduler& scheduler_;
    bool running_ = false;
    // Those that were cancelled end by themselves, some time later, and then leave the list.
    std::list<std::jthread> threads_;
    Lifetime lifetime_;
    // Of the work that is running: another one, or none, is wanted once it is cancelled.
    Lifetime current_;
};

} // namespace vornic
