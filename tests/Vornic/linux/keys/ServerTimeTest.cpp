#include "Vornic/linux/keys/ServerTime.h"

#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vornic {
namespace {

constexpr std::uint64_t nanosPerMilli = 1'000'000;

/// The clock's time as the server would stamp it.
std::uint32_t millisOf(const ManualClock& clock) {
    return static_cast<std::uint32_t>(clock.nanos() / nanosPerMilli);
}

TEST(ServerTime, goesBackByTheAgeOfTheEvent) {
    ManualClock clock;
    clock.advance(0.0007);
    ServerTime time(clock);
    EXPECT_EQ(time.nanos(millisOf(clock) - 10), clock.nanos() - 10 * nanosPerMilli);
    EXPECT_EQ(time.nanos(millisOf(clock)), clock.nanos());
}

TEST(ServerTime, survivesTheWrapAfterFortyNineDays) {
    ManualClock clock;
    constexpr double daysUntilTheWrap = 4294967296e-3;
    clock.advance(daysUntilTheWrap - clock.seconds() + 0.003);
    ServerTime time(clock);
    ASSERT_EQ(millisOf(clock), 3U);
    EXPECT_EQ(time.nanos(0xFFFF'FFFEU), clock.nanos() - 5 * nanosPerMilli);
    EXPECT_EQ(time.nanos(0), clock.nanos() - 3 * nanosPerMilli);
}

TEST(ServerTime, anEventASecondOldOrAheadHappensNow) {
    ManualClock clock;
    EXPECT_EQ(ServerTime(clock).nanos(millisOf(clock) - 999), clock.nanos() - 999 * nanosPerMilli);
    EXPECT_EQ(ServerTime(clock).nanos(millisOf(clock) - 1000), clock.nanos());
    EXPECT_EQ(ServerTime(clock).nanos(millisOf(clock) + 1), clock.nanos());
    EXPECT_EQ(ServerTime(clock).nanos(millisOf(clock) + 0x8000'0000U), clock.nanos());
}

TEST(ServerTime, anImplausibleEventDoesNotSpoilTheNext) {
    ManualClock clock;
    ServerTime time(clock);
    EXPECT_EQ(time.nanos(millisOf(clock) - 5000), clock.nanos());
    clock.advance(0.1);
    EXPECT_EQ(time.nanos(millisOf(clock) - 7), clock.nanos() - 7 * nanosPerMilli);
}

TEST(ServerTime, neverRunsBackwards) {
    ManualClock clock;
    ServerTime time(clock);
    const std::uint32_t stamp = millisOf(clock);
    clock.advance(0.00095);
    const std::uint64_t first = time.nanos(stamp);
    EXPECT_EQ(first, clock.nanos());
    // Two events of one millisecond, the second of which is read in the next.
    clock.advance(0.0001);
    EXPECT_EQ(time.nanos(stamp), first);
}

TEST(ServerTime, isRightOnAverage) {
    double error = 0;
    double largest = 0;
    constexpr int events = 1000;
    for (int event = 0; event < events; ++event) {
        ManualClock clock;
        clock.advance(event * 1e-6);
        const std::uint64_t happened = clock.nanos();
        const std::uint32_t stamp = millisOf(clock);
        clock.advance(0.0003);
        const double off =
            (static_cast<double>(ServerTime(clock).nanos(stamp)) - static_cast<double>(happened)) /
            1e6;
        error += off / events;
        largest = std::max(largest, std::abs(off));
    }
    EXPECT_NEAR(error, 0.0, 0.01);
    EXPECT_LT(largest, 1.0);
}

} // namespace
} // namespace vornic
