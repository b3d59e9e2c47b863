#pragma once

#include <cstdint>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VORNIC_GUARD_ACTIVE 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VORNIC_GUARD_ACTIVE 0
#endif
#endif
#if !defined(VORNIC_GUARD_ACTIVE)
#define VORNIC_GUARD_ACTIVE 1
#endif

namespace vornic {

/// What the interposed functions write and the guard reads. One for each thread.
struct RealTimeCounts {
    bool counting = false;
    std::int64_t allocations = 0;
    std::int64_t frees = 0;
    std::int64_t locks = 0;
    std::int64_t waits = 0;
    const char* first = nullptr;

    /// Needs no construction and no destruction, so it may be used before main and at any point of
    /// a thread's life.
    static RealTimeCounts& ofThisThread() noexcept;

    void note(std::int64_t RealTimeCounts::* counter, const char* name) noexcept {
        if (counting) {
            ++(this->*counter);
            if (first == nullptr) {
                first = name;
            }
        }
    }
};

} // namespace vornic
