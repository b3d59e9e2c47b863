#include "Vornic/typing/KeyThread.h"

#include "tests/support/WaitFor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <future>
#include <string>
#include <thread>
#include <vector>

namespace vornic {
namespace {

/// A pipe whose bytes are the events. Its writing end may be used on any thread.
class PipeSource final : public EventSource {
  public:
    PipeSource() { open(); }
    ~PipeSource() override {
        close();
        hangUp();
    }

    int fileDescriptor() const override { return ends_[0]; }
    void dispatch() override {
        ++dispatches;
        char byte = 0;
        ssize_t got = 0;
        while (ends_[0] >= 0 && (got = ::read(ends_[0], &byte, 1)) > 0) {
            heard += byte;
            ++count;
            onEvent();
        }
        if (ends_[0] >= 0 && got == 0) {
            close();
        }
    }

    void open() {
        ASSERT_EQ(::pipe(ends_.data()), 0);
        ::fcntl(ends_[0], F_SETFL, O_NONBLOCK);
    }
    void send(char byte) const { ASSERT_EQ(::write(ends_[1], &byte, 1), 1); }
    void hangUp() {
        ::close(ends_[1]);
        ends_[1] = -1;
    }

    std::function<void()> onEvent = [] {};
    std::string heard; // key thread
    std::atomic<int> count{0};
    std::atomic<int> dispatches{0};

  private:
    void close() {
        ::close(ends_[0]);
        ends_[0] = -1;
    }

    std::array<int, 2> ends_{-1, -1};
};

/// Runs `work` on the key thread and waits until it is done.
void runOn(KeyThread& keys, const std::function<void()>& work = [] {}) {
    std::promise<void> done;
    keys.post([&] {
        work();
        done.set_value();
    });
    done.get_future().wait();
}

TEST(KeyThread, runsWorkInOrderOnOneOtherThread) {
    std::vector<int> order;
    std::vector<std::thread::id> threads;
    {
        KeyThread keys;
        for (int item = 0; item < 1000; ++item) {
            keys.post([&, item] {
                order.push_back(item);
                threads.push_back(std::this_thread::get_id());
            });
        }
    }
    ASSERT_EQ(order.size(), 1000U);
    for (int item = 0; item < 1000; ++item) {
        EXPECT_EQ(order[static_cast<std::size_t>(item)], item);
        EXPECT_EQ(threads[static_cast<std::size_t>(item)], threads.front());
    }
    EXPECT_NE(threads.front(), std::this_thread::get_id());
}

TEST(KeyThread, takesWorkFromManyThreads) {
    int count = 0;
    {
        KeyThread keys;
        const auto postMany = [&] {
            for (int item = 0; item < 1000; ++item) {
                keys.post([&count] { ++count; });
            }
        };
        const std::array<std::jthread, 4> posters{std::jthread(postMany), std::jthread(postMany),
                                                  std::jthread(postMany), std::jthread(postMany)};
    }
    EXPECT_EQ(count, 4000);
}

TEST(KeyThread, workMayPostWork) {
    std::promise<void> done;
    KeyThread keys;
    keys.post([&] { keys.post([&] { done.set_value(); }); });
    EXPECT_EQ(done.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

TEST(KeyThread, deliversEventsUntilTheSourceIsUnwatched) {
    PipeSource source;
    KeyThread keys;
    runOn(keys, [&] { keys.watch(source); });
    source.send('a');
    source.send('b');
    EXPECT_TRUE(waitFor([&] { return source.count == 2; }));
    runOn(keys, [&] { keys.unwatch(source); });
    source.send('c');
    runOn(keys);
    runOn(keys);
    EXPECT_EQ(source.heard, "ab");
}

TEST(KeyThread, deliversWhatWaitedBeforeItWatched) {
    // Some sources hold events in memory, of which no descriptor tells.
    class WaitingInMemory final : public EventSource {
      public:
        int fileDescriptor() const override { return -1; }
        void dispatch() override { ++dispatches; }
        int dispatches = 0;
    } source;
    KeyThread keys;
    runOn(keys, [&] { keys.watch(source); });
    runOn(keys);
    EXPECT_EQ(source.dispatches, 1);
}

TEST(KeyThread, aSourceWatchedTwiceIsWatchedOnce) {
    PipeSource source;
    KeyThread keys;
    runOn(keys, [&] {
        keys.watch(source);
        keys.watch(source);
    });
    runOn(keys, [&] { keys.unwatch(source); });
    source.send('a');
    runOn(keys);
    runOn(keys);
    EXPECT_EQ(source.count, 0);
}

TEST(KeyThread, aSourceMayUnwatchItselfAndOthers) {
    PipeSource first;
    PipeSource second;
    KeyThread keys;
    const auto unwatchBoth = [&] {
        keys.unwatch(first);
        keys.unwatch(second);
    };
    first.onEvent = unwatchBoth;
    second.onEvent = unwatchBoth;
    // Both become readable before the thread looks again, so that one of them has to be left out.
    runOn(keys, [&] {
        keys.watch(first);
        keys.watch(second);
        first.send('a');
        second.send('b');
    });
    EXPECT_TRUE(waitFor([&] { return first.count + second.count > 0; }));
    runOn(keys);
    EXPECT_EQ(first.count + second.count, 1);
}

TEST(KeyThread, aSourceThatHasHungUpCostsNothing) {
    PipeSource source;
    KeyThread keys;
    runOn(keys, [&] { keys.watch(source); });
    source.hangUp();
    int dispatches = 0;
    ASSERT_TRUE(waitFor([&] {
        bool gone = false;
        runOn(keys, [&] { gone = source.fileDescriptor() < 0; });
        dispatches = source.dispatches;
        return gone;
    }));
    for (int round = 0; round < 100; ++round) {
        runOn(keys);
    }
    EXPECT_EQ(source.dispatches, dispatches);
}

TEST(KeyThread, aSourceThatComesBackIsHeardAgain) {
    PipeSource source;
    KeyThread keys;
    int before = -1;
    runOn(keys, [&] {
        keys.watch(source);
        before = source.fileDescriptor();
    });
    source.hangUp();
    ASSERT_TRUE(waitFor([&] {
        bool gone = false;
        runOn(keys, [&] { gone = source.fileDescriptor() < 0; });
        return gone;
    }));
    runOn(keys, [&] {
        source.open();
        // The system gives the lowest free number: the same one again.
        EXPECT_EQ(source.fileDescriptor(), before);
    });
    source.send('a');
    EXPECT_TRUE(waitFor([&] { return source.count == 1; }));
}

TEST(KeyThread, workDoesNotKeepEventsWaiting) {
    PipeSource source;
    KeyThread keys;
    std::atomic<bool> stop{false};
    std::function<void()> again = [&] {
        if (!stop) {
            keys.post(again);
        }
    };
    runOn(keys, [&] { keys.watch(source); });
    keys.post(again);
    source.send('a');
    EXPECT_TRUE(waitFor([&] { return source.count == 1; }));
    stop = true;
    runOn(keys);
}

TEST(KeyThread, takesARealTimePriorityWhereThatIsGranted) {
    // The C library remembers a policy of its own; the calls with thread 0 ask the system.
    bool granted = false;
    std::thread([&] {
        sched_param parameters{};
        parameters.sched_priority = sched_get_priority_min(SCHED_RR);
        granted = ::sched_setscheduler(0, SCHED_RR, &parameters) == 0;
    }).join();
    KeyThread keys;
    int policy = -1;
    int child = -1;
    runOn(keys, [&] {
        policy = ::sched_getscheduler(0);
        std::thread([&] { child = ::sched_getscheduler(0); }).join();
    });
#ifdef SCHED_RESET_ON_FORK
    policy &= ~SCHED_RESET_ON_FORK;
#endif
    EXPECT_EQ(policy, granted ? SCHED_RR : SCHED_OTHER);
    EXPECT_EQ(child, SCHED_OTHER);
}

} // namespace
} // namespace vornic
