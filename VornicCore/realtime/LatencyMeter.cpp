#include "VornicCore/realtime/LatencyMeter.h"

#include <algorithm>
#include <array>
#include <atomic>

namespace vornic {

namespace {

// Process-wide by purpose: audio thread and diagnostics share nothing else.
constinit std::atomic<std::uint32_t> latencyLast{0};
constinit std::atomic<std::uint32_t> latencyMax{0};
constinit std::atomic<std::uint32_t> latencyCount{0};
constinit std::array<std::atomic<std::uint32_t>, vornic_latency_kept> latencyRecent{};

constexpr auto relaxed = std::memory_order_relaxed;

} // namespace

void vornic_latency_record(std::uint32_t micros) VORNIC_REALTIME {
    latencyLast.store(micros, relaxed);
    std::uint32_t largest = latencyMax.load(relaxed);
    while (micros > largest && !latencyMax.compare_exchange_weak(largest, micros, relaxed)) {
        // A failed exchange has read the new value into `largest`.
    }
    latencyRecent[latencyCount.fetch_add(1, relaxed) % vornic_latency_kept].store(micros, relaxed);
}

std::uint32_t vornic_latency_last() VORNIC_REALTIME {
    return latencyLast.load(relaxed);
}

std::uint32_t vornic_latency_max() VORNIC_REALTIME {
    return latencyMax.load(relaxed);
}

std::uint32_t vornic_latency_count() VORNIC_REALTIME {
    return latencyCount.load(relaxed);
}

std::size_t
vornic_latency_recent(std::span<std::uint32_t, vornic_latency_kept> into) VORNIC_REALTIME {
    const std::size_t kept = std::min<std::size_t>(latencyCount.load(relaxed), into.size());
    for (std::size_t place = 0; place < kept; ++place) {
        into[place] = latencyRecent[place].load(relaxed);
    }
    return kept;
}

void vornic_latency_reset() VORNIC_REALTIME {
    latencyLast.store(0, relaxed);
    latencyMax.store(0, relaxed);
    latencyCount.store(0, relaxed);
}

} // namespace vornic
