#pragma once

#include "Vornic/platform/Clock.h"

#include <cstdint>
#include <optional>

namespace vornic {

/// How many nanoseconds (`numer` / `denom`) one tick of a host clock lasts.
struct Timebase {
    std::uint32_t numer = 1;
    std::uint32_t denom = 1;
};

/// Turns the time stamps of key events into monotonic nanoseconds. Whether stamps are nanoseconds
/// or ticks of the host clock is decided by the first one and never again. Key thread.
class EventTime {
  public:
    EventTime(const Clock& clock, Timebase timebase) : clock_(clock), timebase_(timebase) {}

    /// The time of an event stamped `stamp`; now when it has no stamp (0) or an implausible one,
    /// which lies in the future or a second or more in the past. Fatal when the conversion of ticks
    /// overflows or the timebase divides by zero.
    std::uint64_t nanos(std::uint64_t stamp);

  private:
    std::uint64_t fromTicks(std::uint64_t stamp) const;

    const Clock& clock_;
    Timebase timebase_;
    std::optional<bool> stampIsTicks_;
};

/// The stamp in nanoseconds for a 32-bit millisecond time of the clock that shows `nowNanos`, which
/// wraps every 49.7 days. True to a millisecond either way, and never later than now unless the time
/// itself is.
std::uint64_t nanosOfWrappedMillis(std::uint32_t millis, std::uint64_t nowNanos);

} // namespace vornic
