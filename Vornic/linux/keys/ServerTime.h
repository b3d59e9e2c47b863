#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/typing/EventTime.h"

#include <cstdint>

namespace vornic {

/// Turns the X server's times, milliseconds of the monotonic clock in 32 bits that wrap every 49.7
/// days, into monotonic nanoseconds. Thread: key.
class ServerTime {
  public:
    explicit ServerTime(const Clock& clock);

    /// The time of an event that the server stamped `millis`. Never ahead of the clock nor before
    /// an earlier event's. The server cuts its times to whole milliseconds; what it cut off is
    /// taken from the clock, so that a stamp is less than a millisecond early or late, and right on
    /// average.
    std::uint64_t nanos(std::uint32_t millis);

  private:
    const Clock& clock_;
    EventTime eventTime_;
    std::uint64_t latest_ = 0;
};

} // namespace vornic
