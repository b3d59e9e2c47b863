#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace vornic {

/// How latencies spread. Thread: any.
struct LatencyHistogram {
    /// Each bin is this wide, in milliseconds; the last one also holds everything beyond.
    static constexpr double binMillis = 1;
    static constexpr std::size_t binCount = 20;

    std::array<std::size_t, binCount> bins{};
    std::size_t keys = 0;
    /// Half of the keys, and 95 of 100, sounded within so many milliseconds; 0 without keys.
    double medianMillis = 0;
    double p95Millis = 0;

    /// Of latencies in milliseconds, in any order. One that is no number is left out.
    static LatencyHistogram of(std::span<const double> millis);
};

} // namespace vornic
