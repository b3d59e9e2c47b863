#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstdint>

namespace vornic {

// The key-to-sound latency of the whole process, in microseconds. Every function may be called
// from every thread and is lock-free. The three values are statistics: a reader may see them from
// slightly different moments.

/// Notes one latency: it becomes the last one, raises the largest one and is counted.
void vornic_latency_record(std::uint32_t micros) VORNIC_REALTIME;

/// The last latency recorded since the last reset, 0 if there was none.
[[nodiscard]] std::uint32_t vornic_latency_last() VORNIC_REALTIME;

/// The largest latency since the last reset, 0 if there was none.
[[nodiscard]] std::uint32_t vornic_latency_max() VORNIC_REALTIME;

/// Latencies recorded since the last reset.
[[nodiscard]] std::uint32_t vornic_latency_count() VORNIC_REALTIME;

/// Sets all three to zero.
void vornic_latency_reset() VORNIC_REALTIME;

} // namespace vornic
