#include "Vornic/linux/keys/ServerTime.h"

#include <algorithm>

namespace vornic {

namespace {

constexpr std::uint64_t nanosPerMilli = 1'000'000;

} // namespace

// A tick of this clock is a nanosecond, so whatever the first stamp looks like decides nothing.
ServerTime::ServerTime(const Clock& clock)
    : clock_(clock), eventTime_(clock, Timebase{.numer = 1, .denom = 1}) {}

std::uint64_t ServerTime::nanos(std::uint32_t millis) {
    const std::uint64_t now = clock_.nanos();
    // In 32 bits the difference is right across the wrap too; a time ahead of the clock becomes an
    // age of weeks, which is not plausible.
    const std::uint32_t age = static_cast<std::uint32_t>(now / nanosPerMilli) - millis;
    const std::uint64_t nanosAgo = age * nanosPerMilli;
    const std::uint64_t stamp = nanosAgo < now ? now - nanosAgo : 0;
    latest_ = std::max(latest_, eventTime_.nanos(stamp));
    return latest_;
}

} // namespace vornic
