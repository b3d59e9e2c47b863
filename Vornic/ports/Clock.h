#pragma once

#include <cstdint>

namespace vornic {

/// Monotonic time, behind an interface so that tests advance it by hand. Thread: any.
class Clock {
  public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Nanoseconds of the system's monotonic clock, the one that key events are stamped with.
    virtual std::uint64_t nanos() const = 0;

    /// The same instant in seconds.
    double seconds() const { return static_cast<double>(nanos()) / 1e9; }
};

} // namespace vornic
