#pragma once

#include "Vornic/ports/Clock.h"

#include <cstdint>
#include <optional>

namespace vornic {

/// How many nanoseconds (`numer` / `denom`) one tick of a host clock lasts.
struct Timebase {
    std::uint32_t numer = 1;
    std::uint32_t denom = 1;
};

/// Turns the time stamps of key events into monotonic nanoseconds. Whether stamps are nanoseconds
/// or ticks of the host clock is decided by the first one and never again.
/// Thread: key, as everything here.
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

} // namespace vornic
