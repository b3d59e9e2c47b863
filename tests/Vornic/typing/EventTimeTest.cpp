#include "Vornic/typing/EventTime.h"

#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

constexpr std::uint64_t second = 1'000'000'000;

__extension__ using Wide = unsigned __int128;

TEST(EventTime, anEventWithoutAStampHappensNow) {
    ManualClock clock;
    EventTime time(clock, {1, 1});
    EXPECT_EQ(time.nanos(0), clock.nanos());
}

TEST(EventTime, aPlausibleStampIsTaken) {
    ManualClock clock;
    EventTime time(clock, {125, 3});
    EXPECT_EQ(time.nanos(clock.nanos() - 5), clock.nanos() - 5);
    EXPECT_EQ(time.nanos(clock.nanos()), clock.nanos());
    EXPECT_EQ(time.nanos(clock.nanos() - second + 1), clock.nanos() - second + 1);
}

TEST(EventTime, onceNanosecondsAlwaysNanoseconds) {
    ManualClock clock;
    EventTime time(clock, {125, 3});
    time.nanos(clock.nanos() - 5);
    // As ticks this one would be plausible; it is not asked.
    EXPECT_EQ(time.nanos((clock.nanos() - 500) / 125 * 3), clock.nanos());
    EXPECT_EQ(time.nanos(clock.nanos() - second), clock.nanos());
    EXPECT_EQ(time.nanos(clock.nanos() + 1), clock.nanos());
}

TEST(EventTime, aFirstStampASecondOldSwitchesToTicksForGood) {
    ManualClock clock;
    EventTime time(clock, {125, 3});
    const std::uint64_t ticks = clock.nanos() / 125 * 3;
    EXPECT_EQ(time.nanos(ticks), ticks / 3 * 125);
    clock.advance(0.1);
    // Plausible as nanoseconds, and not taken as such any more.
    EXPECT_EQ(time.nanos(clock.nanos() - 10), clock.nanos());
    EXPECT_EQ(time.nanos(clock.nanos() / 125 * 3 - 3), clock.nanos() / 125 * 125 - 125);
}

TEST(EventTime, aFirstStampAheadOfTheClockSwitchesToTicks) {
    ManualClock clock;
    EventTime time(clock, {1, 2});
    const std::uint64_t ticks = clock.nanos() * 2 - 8;
    EXPECT_EQ(time.nanos(ticks), clock.nanos() - 4);
}

TEST(EventTime, ticksThatAreImplausibleTooMeanNow) {
    ManualClock clock;
    EventTime time(clock, {1, 1});
    EXPECT_EQ(time.nanos(5), clock.nanos());
    EXPECT_EQ(time.nanos(clock.nanos() + 5), clock.nanos());
}

TEST(EventTime, aStampOfZeroDecidesNothing) {
    ManualClock clock;
    EventTime time(clock, {125, 3});
    time.nanos(0);
    EXPECT_EQ(time.nanos(clock.nanos() - 5), clock.nanos() - 5);
    EXPECT_EQ(time.nanos(clock.nanos() / 125 * 3), clock.nanos());
}

TEST(EventTime, convertsTicksWithoutLosingAny) {
    ManualClock clock;
    EventTime time(clock, {1'000'000'000, 999'999'937});
    const std::uint64_t ticks = clock.nanos() / 1'000'000'000 * 999'999'937 - 1;
    const auto exact = static_cast<std::uint64_t>(Wide{ticks} * 1'000'000'000u / 999'999'937u);
    time.nanos(5); // implausible: ticks from now on
    EXPECT_EQ(time.nanos(ticks), exact);
}

TEST(EventTime, aPlausibleFirstStampIsNotEvenConverted) {
    ManualClock clock;
    EventTime time(clock, {1, 0});
    EXPECT_EQ(time.nanos(clock.nanos() - 1), clock.nanos() - 1);
}

TEST(EventTimeDeathTest, anOverflowIsFatal) {
    ManualClock clock;
    EXPECT_DEATH(EventTime(clock, {4'000'000'000u, 1}).nanos(~std::uint64_t{0}), "overflows");
    // Three times the quotient is the largest number there is, and the remainder adds one.
    EXPECT_DEATH(EventTime(clock, {3, 2}).nanos(12'297'829'382'473'034'411u), "overflows");
}

TEST(EventTimeDeathTest, aTimebaseThatDividesByZeroIsFatal) {
    ManualClock clock;
    EXPECT_DEATH(EventTime(clock, {1, 0}).nanos(1), "divides by zero");
}

} // namespace
} // namespace vornic
