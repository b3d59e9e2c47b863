#pragma once

#include "VornicCore/realtime/LatencyMeter.h"

#include <cstdint>

namespace vornic {

/// The latency meter as diagnostics show it. Any thread.
struct Latency {
    Latency() = delete;

    /// The last key-to-sound latency, in milliseconds.
    static double lastMillis() { return vornic_latency_last() / 1000.0; }
    /// The largest key-to-sound latency since the last reset, in milliseconds.
    static double maxMillis() { return vornic_latency_max() / 1000.0; }
    /// Keys measured since the last reset.
    static std::int64_t count() { return vornic_latency_count(); }
    static void reset() { vornic_latency_reset(); }
};

} // namespace vornic
