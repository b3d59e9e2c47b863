#pragma once

#include "Vornic/ports/Clock.h"

#include <cstdint>

namespace vornic {

/// CLOCK_MONOTONIC, which X events, evdev events and PipeWire's cycles are stamped with.
/// Thread: any.
class MonotonicClock final : public Clock {
  public:
    std::uint64_t nanos() const override;
};

} // namespace vornic
