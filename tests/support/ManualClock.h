#pragma once

#include "Vornic/ports/Clock.h"

#include <atomic>
#include <cmath>
#include <cstdint>

namespace vornic {

/// A clock that stands still until a test moves it.
class ManualClock final : public Clock {
  public:
    std::uint64_t nanos() const override { return nanos_; }

    void advance(double seconds) {
        nanos_ += static_cast<std::uint64_t>(std::llround(seconds * 1e9));
    }

  private:
    // Not 0: that stands for an unknown time in many places.
    std::atomic<std::uint64_t> nanos_{1'000'000'000'000};
};

} // namespace vornic
