#pragma once

#include "Vornic/ports/Scheduler.h"

#include <cstddef>
#include <mutex>
#include <stdexcept>
#include <utility>
#include <vector>

namespace vornic {

/// A main thread without a loop: posted work waits until the test runs it. Has no timers.
class QueueScheduler final : public Scheduler {
  public:
    void post(std::function<void()> work) override {
        const std::scoped_lock lock(mutex_);
        waiting_.push_back(std::move(work));
    }
    std::unique_ptr<Timer> after(std::chrono::milliseconds, std::function<void()>) override {
        throw std::logic_error("this scheduler has no timers");
    }
    std::unique_ptr<Timer> every(std::chrono::milliseconds, std::function<void()>) override {
        throw std::logic_error("this scheduler has no timers");
    }

    /// Runs what waits; how much that was.
    std::size_t run() {
        std::vector<std::function<void()>> work;
        {
            const std::scoped_lock lock(mutex_);
            work.swap(waiting_);
        }
        for (const auto& item : work) {
            item();
        }
        return work.size();
    }

  private:
    std::mutex mutex_;
    std::vector<std::function<void()>> waiting_;
};

} // namespace vornic
