#pragma once

#include <cstdint>
#include <string>

namespace vornic {

/// Counts, on the thread that made it and while it lives, what real-time code must not do: allocate
/// or free memory and take locks. The test program's own versions of malloc, pthread_mutex_lock and
/// so on count and then call the real ones (`operator new`, std::mutex and the like end there).
/// Guards on one thread must not overlap.
///
/// A sanitizer replaces the same functions, so in its builds the guard is inactive: it counts
/// nothing. Tests assert through `expectRealTimeSafe`, or only when `active()`.
class RealTimeGuard {
  public:
    /// Whether this build counts at all.
    static bool active();

    RealTimeGuard();
    ~RealTimeGuard();
    RealTimeGuard(const RealTimeGuard&) = delete;
    RealTimeGuard& operator=(const RealTimeGuard&) = delete;

    /// Allocations, also by realloc. Freeing null is not counted.
    std::int64_t allocations() const;
    std::int64_t frees() const;
    /// Mutexes and read-write locks taken, or tried.
    std::int64_t locks() const;
    /// Waits for a condition variable.
    std::int64_t waits() const;

    /// The function that was counted first, null if none was.
    const char* first() const;
};

} // namespace vornic
