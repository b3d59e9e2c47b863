#pragma once

#include "Vornic/ports/Scheduler.h"

#include <chrono>
#include <functional>
#include <memory>

namespace vornic {

/// The main thread's event loop as a Scheduler. Needs a running QCoreApplication.
/// Thread: main, but `post`: any.
class QtScheduler final : public Scheduler {
  public:
    void post(std::function<void()> work) override;
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                 std::function<void()> work) override;
    std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                 std::function<void()> work) override;
};

} // namespace vornic
