#include "tests/support/RealTimeGuard.h"

#include "tests/support/ExpectRealTimeSafe.h"
#include "tests/support/RealTimeCounts.h"
#include "tests/support/SystemCallFilter.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <mutex>
#include <new>
#include <ostream>
#include <shared_mutex>
#include <string>
#include <thread>
#include <vector>

namespace vornic {
namespace {

/// Hides a pointer's use from the compiler, which may otherwise leave out new with delete.
template <typename T>
T* used(T* pointer) {
    asm volatile("" : "+r"(pointer) : : "memory");
    return pointer;
}

/// Where nothing can be counted, the tests of the counting say so instead of passing.
class RealTimeGuardTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!RealTimeGuard::active()) {
            GTEST_SKIP() << "a sanitizer owns the functions that the guard counts";
        }
    }

    struct Found {
        std::int64_t allocations = 0, frees = 0, locks = 0, waits = 0;
        std::string first;
        bool operator==(const Found&) const = default;
        friend std::ostream& operator<<(std::ostream& out, const Found& found) {
            return out << found.allocations << " allocations, " << found.frees << " frees, "
                       << found.locks << " locks, " << found.waits << " waits, first "
                       << found.first;
        }
    };

    template <typename Work>
    static Found count(const Work& work) {
        Found found;
        const char* first = nullptr;
        {
            const RealTimeGuard guard;
            work();
            found.allocations = guard.allocations();
            found.frees = guard.frees();
            found.locks = guard.locks();
            found.waits = guard.waits();
            first = guard.first();
        }
        found.first = first == nullptr ? "" : first;
        return found;
    }
};

TEST_F(RealTimeGuardTest, staysSilentForArithmetic) {
    std::vector<float> values(100, 1.0F);
    EXPECT_EQ(count([&] {
                  for (float& value : values) {
                      value = std::sqrt(value + 1.0F);
                  }
                  std::free(nullptr); // does nothing at all
              }),
              Found{});
}

TEST_F(RealTimeGuardTest, countsOnlyWhileItLives) {
    std::free(used(std::malloc(8)));
    EXPECT_EQ(count([] {}), Found{});
    std::free(used(std::malloc(8)));
    EXPECT_EQ(RealTimeCounts::ofThisThread().allocations, 0);
    EXPECT_EQ(RealTimeCounts::ofThisThread().frees, 0);
}

TEST_F(RealTimeGuardTest, countsEveryAllocator) {
    void* block = nullptr;
    EXPECT_EQ(count([&] { block = used(std::malloc(8)); }),
              (Found{.allocations = 1, .first = "malloc"}));
    EXPECT_EQ(count([&] { block = used(std::realloc(block, 4000)); }),
              (Found{.allocations = 1, .first = "realloc"}));
    EXPECT_EQ(count([&] { std::free(block); }), (Found{.frees = 1, .first = "free"}));
    EXPECT_EQ(count([&] { block = used(std::calloc(3, 8)); }),
              (Found{.allocations = 1, .first = "calloc"}));
    std::free(block);
    EXPECT_EQ(count([&] { block = used(std::aligned_alloc(64, 128)); }),
              (Found{.allocations = 1, .first = "aligned_alloc"}));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0U);
    std::free(block);
    EXPECT_EQ(count([&] { EXPECT_EQ(posix_memalign(&block, 64, 128), 0); }),
              (Found{.allocations = 1, .first = "posix_memalign"}));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0U);
    std::free(block);
}

TEST_F(RealTimeGuardTest, countsNewAndDelete) {
    int* one = nullptr;
    EXPECT_EQ(count([&] { one = used(new int(1)); }), (Found{.allocations = 1, .first = "malloc"}));
    EXPECT_EQ(count([&] { delete one; }), (Found{.frees = 1, .first = "free"}));
    EXPECT_EQ(count([] { delete[] used(new float[100]); }),
              (Found{.allocations = 1, .frees = 1, .first = "malloc"}));
    struct alignas(64) Wide {
        int value;
    };
    EXPECT_EQ(count([] { delete used(new Wide{1}); }),
              (Found{.allocations = 1, .frees = 1, .first = "aligned_alloc"}));
    EXPECT_EQ(count([] { used(std::make_shared<std::string>(100, 'x').get()); }).allocations, 2);
}

TEST_F(RealTimeGuardTest, countsLocks) {
    std::mutex mutex;
    EXPECT_EQ(count([&] { const std::scoped_lock lock(mutex); }),
              (Found{.locks = 1, .first = "pthread_mutex_lock"}));
    EXPECT_EQ(count([&] {
                  if (mutex.try_lock()) {
                      mutex.unlock();
                  }
              }),
              (Found{.locks = 1, .first = "pthread_mutex_trylock"}));
    std::timed_mutex timed;
    EXPECT_EQ(count([&] {
                  if (timed.try_lock_for(std::chrono::milliseconds(1))) {
                      timed.unlock();
                  }
              }).locks,
              1);
    std::shared_mutex shared;
    EXPECT_EQ(count([&] { const std::shared_lock lock(shared); }),
              (Found{.locks = 1, .first = "pthread_rwlock_rdlock"}));
    EXPECT_EQ(count([&] { const std::scoped_lock lock(shared); }),
              (Found{.locks = 1, .first = "pthread_rwlock_wrlock"}));
    EXPECT_EQ(count([&] {
                  if (shared.try_lock()) {
                      shared.unlock();
                  }
              }),
              (Found{.locks = 1, .first = "pthread_rwlock_trywrlock"}));
    EXPECT_EQ(count([&] {
                  if (shared.try_lock_shared()) {
                      shared.unlock_shared();
                  }
              }),
              (Found{.locks = 1, .first = "pthread_rwlock_tryrdlock"}));
}

TEST_F(RealTimeGuardTest, countsWaits) {
    std::mutex mutex;
    std::condition_variable condition;
    std::unique_lock lock(mutex);
    const auto soon = std::chrono::milliseconds(1);
    EXPECT_EQ(count([&] { condition.wait_for(lock, soon); }).waits, 1);
    EXPECT_EQ(
        count([&] { condition.wait_until(lock, std::chrono::system_clock::now() + soon); }).waits,
        1);
    bool woken = false;
    std::thread waker([&] {
        const std::scoped_lock inner(mutex);
        woken = true;
        condition.notify_one();
    });
    EXPECT_GE(count([&] {
                  while (!woken) {
                      condition.wait(lock);
                  }
              }).waits,
              1);
    lock.unlock();
    waker.join();
}

TEST_F(RealTimeGuardTest, countsOnItsOwnThreadOnly) {
    std::mutex mutex;
    std::condition_variable changed;
    int step = 0;
    std::thread other([&] {
        const auto waitFor = [&](int wanted) {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return step == wanted; });
        };
        waitFor(1);
        std::free(used(std::malloc(8)));
        const std::scoped_lock lock(mutex);
        step = 2;
        changed.notify_one();
    });
    const Found found = count([&] {
        std::unique_lock lock(mutex); // the only lock taken by this thread besides the waiting
        step = 1;
        changed.notify_one();
        while (step != 2) {
            changed.wait(lock);
        }
    });
    EXPECT_EQ(found.allocations, 0);
    EXPECT_EQ(found.frees, 0);
    EXPECT_EQ(found.locks, 1);
    other.join();
}

TEST_F(RealTimeGuardTest, namesTheFirstOffender) {
    std::mutex mutex;
    EXPECT_EQ(count([&] {
                  const std::scoped_lock lock(mutex);
                  std::free(used(std::malloc(8)));
              }),
              (Found{.allocations = 1, .frees = 1, .locks = 1, .first = "pthread_mutex_lock"}));
}

TEST_F(RealTimeGuardTest, systemCallsAreForbiddenAndNamed) {
    EXPECT_EQ(forbiddenSystemCall([] { syscall(SYS_getpid); }),
              "system call " + std::to_string(SYS_getpid) + " (getpid)");
    EXPECT_EQ(forbiddenSystemCall([] {
                  timespec now{};
                  syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &now);
              }),
              "system call " + std::to_string(SYS_clock_gettime) + " (clock_gettime)");
    EXPECT_EQ(forbiddenSystemCall([] { syscall(SYS_sync); }),
              "system call " + std::to_string(SYS_sync));
    EXPECT_NE(forbiddenSystemCall([] { std::this_thread::yield(); }), "");
    EXPECT_NE(forbiddenSystemCall([] {
                  const auto written = ::write(STDERR_FILENO, "x", 1);
                  used(&written);
              }),
              "")
        << "only the report itself may be written";
}

TEST_F(RealTimeGuardTest, noSystemCallIsNoReport) {
    volatile double sum = 0.0;
    EXPECT_EQ(forbiddenSystemCall([&] {
                  for (int i = 0; i < 1000; ++i) {
                      sum = sum + i;
                  }
              }),
              "");
}

TEST_F(RealTimeGuardTest, aCrashInTheCopyIsReported) {
    EXPECT_EQ(forbiddenSystemCall([] { __builtin_trap(); }).rfind("ended by signal", 0), 0U);
}

TEST_F(RealTimeGuardTest, theExpectationFailsForEachKindOfOffence) {
    EXPECT_NONFATAL_FAILURE(expectRealTimeSafe([] { std::free(used(std::malloc(8))); }),
                            "1 allocations, 1 frees, 0 locks, 0 waits; the first was malloc");
    static std::mutex mutex;
    EXPECT_NONFATAL_FAILURE(expectRealTimeSafe([] { const std::scoped_lock lock(mutex); }),
                            "1 locks");
    EXPECT_NONFATAL_FAILURE(expectRealTimeSafe([] { syscall(SYS_getpid); }), "(getpid)");
}

TEST(ExpectRealTimeSafe, runsTheWorkHereInEveryBuild) {
    int runs = 0;
    expectRealTimeSafe([&] { ++runs; });
    EXPECT_EQ(runs, 1);
}

} // namespace
} // namespace vornic
