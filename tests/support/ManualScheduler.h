#pragma once

#include "Vornic/ports/Scheduler.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace vornic {

/// A main thread without a loop, with timers: posted work waits until the test runs it, and time
/// stands still until the test advances it. One-shot and repeating timers fire in order of time.
class ManualScheduler final : public Scheduler {
  public:
    using Milliseconds = std::chrono::milliseconds;

    void post(std::function<void()> work) override {
        const std::scoped_lock lock(mutex_);
        posted_.push_back(std::move(work));
    }

    std::unique_ptr<Timer> after(Milliseconds delay, std::function<void()> work) override {
        return add(delay, Milliseconds(0), std::move(work));
    }
    std::unique_ptr<Timer> every(Milliseconds interval, std::function<void()> work) override {
        return add(interval, interval, std::move(work));
    }

    /// Runs what was posted; how much that was.
    std::size_t run() {
        std::vector<std::function<void()>> work;
        {
            const std::scoped_lock lock(mutex_);
            work.swap(posted_);
        }
        for (const auto& item : work) {
            item();
        }
        return work.size();
    }

    /// Moves time on and fires what has become due, each timer at its own time.
    void advance(Milliseconds by) {
        const Milliseconds end = now_ + by;
        for (auto next = due(end); next != timers_.end(); next = due(end)) {
            now_ = std::max(now_, next->second.at);
            // A copy: the work may destroy its own timer.
            const std::function<void()> work = next->second.work;
            if (next->second.interval.count() > 0) {
                next->second.at += next->second.interval;
            } else {
                timers_.erase(next);
            }
            work();
        }
        now_ = end;
    }

    /// How many timers are pending.
    std::size_t timers() const { return timers_.size(); }

  private:
    struct Entry {
        Milliseconds at;
        Milliseconds interval; // 0: once
        std::function<void()> work;
    };
    using Entries = std::map<std::size_t, Entry>; // by age

    class Handle final : public Timer {
      public:
        Handle(Entries& timers, std::size_t id) : timers_(timers), id_(id) {}
        ~Handle() override { timers_.erase(id_); }

      private:
        Entries& timers_;
        std::size_t id_;
    };

    std::unique_ptr<Timer> add(Milliseconds delay, Milliseconds interval,
                               std::function<void()> work) {
        const std::size_t id = nextId_++;
        timers_.emplace(id, Entry{now_ + delay, interval, std::move(work)});
        return std::make_unique<Handle>(timers_, id);
    }

    // The earliest timer up to `end`; of several at one time the oldest.
    Entries::iterator due(Milliseconds end) {
        const auto first = std::ranges::min_element(
            timers_, {}, [](const auto& entry) { return entry.second.at; });
        return first != timers_.end() && first->second.at <= end ? first : timers_.end();
    }

    std::mutex mutex_;
    std::vector<std::function<void()>> posted_;

    // Main thread only.
    Milliseconds now_{0};
    std::size_t nextId_ = 0;
    Entries timers_;
};

} // namespace vornic
