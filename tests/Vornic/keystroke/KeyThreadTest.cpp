#include "Vornic/keystroke/KeyThread.h"

#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace vornic {
namespace {

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
    ASSERT_EQ(order.size(), 1000u);
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
        std::vector<std::jthread> posters;
        for (int poster = 0; poster < 4; ++poster) {
            posters.emplace_back([&] {
                for (int item = 0; item < 1000; ++item) {
                    keys.post([&count] { ++count; });
                }
            });
        }
    }
    EXPECT_EQ(count, 4000);
}

TEST(KeyThread, callsWhenAWatchedDescriptorCanBeReadUntilItIsUnwatched) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    std::atomic<int> bytes{0};
    std::atomic<bool> unwatched{false};
    {
        KeyThread keys;
        keys.post([&] {
            keys.watch(ends[0], [&] {
                char byte = 0;
                bytes += static_cast<int>(::read(ends[0], &byte, 1));
            });
        });
        ASSERT_EQ(::write(ends[1], "ab", 2), 2);
        EXPECT_TRUE(waitFor([&] { return bytes == 2; }));
        keys.post([&] {
            keys.unwatch(ends[0]);
            unwatched = true;
        });
        EXPECT_TRUE(waitFor([&] { return unwatched.load(); }));
        ASSERT_EQ(::write(ends[1], "c", 1), 1);
    }
    EXPECT_EQ(bytes, 2);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(KeyThread, aWatcherMayUnwatchItself) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    std::atomic<int> calls{0};
    {
        KeyThread keys;
        keys.post([&] {
            keys.watch(ends[0], [&] {
                ++calls;
                keys.unwatch(ends[0]);
            });
        });
        ASSERT_EQ(::write(ends[1], "a", 1), 1);
        EXPECT_TRUE(waitFor([&] { return calls > 0; }));
    }
    EXPECT_EQ(calls, 1);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace vornic
