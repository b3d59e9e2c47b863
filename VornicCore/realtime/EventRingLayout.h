#pragma once

#include "VornicCore/realtime/EventRing.h"

#include <atomic>
#include <cstdint>

namespace vornic {

/// The ring's inside, for its own functions and for tests that start near the counters' end. The
/// counters are never wrapped: they run freely modulo 2^32, and `index & mask` is the slot, so all
/// slots can be used and `head - tail` is the number of queued events, also across the end.
/// Thread: any.
struct vornic_ring {
    /// A counter with a cache line of its own, so that the two threads do not take it from each
    /// other with every event.
    struct alignas(64) Counter : std::atomic<std::uint32_t> {};

    std::uint32_t mask;
    vornic_event* slots;
    /// Pushes so far; written by the producer only.
    Counter head;
    /// Pops so far; written by the consumer only.
    Counter tail;
};

static_assert(std::atomic<std::uint32_t>::is_always_lock_free);

} // namespace vornic
