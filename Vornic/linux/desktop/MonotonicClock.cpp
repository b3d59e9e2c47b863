#include "Vornic/linux/desktop/MonotonicClock.h"

#include <ctime>

namespace vornic {

std::uint64_t MonotonicClock::nanos() const {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000u +
           static_cast<std::uint64_t>(now.tv_nsec);
}

} // namespace vornic
