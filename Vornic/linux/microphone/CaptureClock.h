#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstdint>

namespace vornic {

/// Finds what a capture has lost: a stream that is woken too late for a cycle of the graph gets the
/// next one, and only the graph's clock tells that one is missing. Thread: real-time.
class CaptureClock {
  public:
    /// A cycle has brought `frames`, and the clock reads `ticks`, both counted in frames of the
    /// stream. How many frames were lost before the cycle before this one: a stream that is late
    /// may read the clock of the cycle after its own, so that only the next reading tells a loss
    /// from that. 0 where the graph has changed its clock, since two clocks cannot be compared.
    std::int64_t lostBeforeLast(std::int64_t ticks, std::int64_t frames) VORNIC_REALTIME;

  private:
    std::int64_t begin_ = 0;  // what the clock read when nothing had been brought
    std::int64_t heard_ = 0;  // frames brought so far, lost ones included that are counted
    std::int64_t behind_ = 0; // what the last reading was ahead of that
    std::int64_t last_ = 0;   // frames of the last cycle; 0 before the first
};

} // namespace vornic
