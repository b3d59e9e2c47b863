#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace vornic {

// The key-to-sound latency of the whole process, in microseconds. Every function may be called
// from every thread and is lock-free. The three values are statistics: a reader may see them from
// slightly different moments.

/// Notes one latency: it becomes the last one, raises the largest one and is counted.
/// Thread: any, as everything here.
void vornic_latency_record(std::uint32_t micros) VORNIC_REALTIME;

/// The last latency recorded since the last reset, 0 if there was none.
[[nodiscard]] std::uint32_t vornic_latency_last() VORNIC_REALTIME;

/// The largest latency since the last reset, 0 if there was none.
[[nodiscard]] std::uint32_t vornic_latency_max() VORNIC_REALTIME;

/// Latencies recorded since the last reset.
[[nodiscard]] std::uint32_t vornic_latency_count() VORNIC_REALTIME;

/// How many of the last latencies are kept one by one.
inline constexpr std::size_t vornic_latency_kept = 100;

/// Copies the last latencies since the last reset, at most `vornic_latency_kept`, in no order; how
/// many there are.
std::size_t
vornic_latency_recent(std::span<std::uint32_t, vornic_latency_kept> into) VORNIC_REALTIME;

/// Forgets everything: last, largest and count become zero.
void vornic_latency_reset() VORNIC_REALTIME;

} // namespace vornic
