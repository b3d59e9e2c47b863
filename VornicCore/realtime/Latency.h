#pragma once

#include "VornicCore/realtime/LatencyMeter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vornic {

/// The latency meter as diagnostics show it. Thread: any.
struct Latency {
    Latency() = delete;

    /// The last key-to-sound latency, in milliseconds.
    static double lastMillis() { return vornic_latency_last() / 1000.0; }
    /// The largest key-to-sound latency since the last reset, in milliseconds.
    static double maxMillis() { return vornic_latency_max() / 1000.0; }
    /// Keys measured since the last reset.
    static std::int64_t count() { return vornic_latency_count(); }
    /// The last latencies since the last reset, at most a hundred, in milliseconds, in no order.
    static std::vector<double> recentMillis() {
        std::array<std::uint32_t, vornic_latency_kept> micros{};
        const std::size_t kept = vornic_latency_recent(micros);
        std::vector<double> millis(kept);
        std::transform(micros.begin(), micros.begin() + static_cast<std::ptrdiff_t>(kept),
                       millis.begin(), [](std::uint32_t value) { return value / 1000.0; });
        return millis;
    }
    static void reset() { vornic_latency_reset(); }
};

} // namespace vornic
