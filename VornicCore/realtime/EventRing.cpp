#include "VornicCore/realtime/EventRing.h"

#include "VornicCore/realtime/EventRingLayout.h"
#include "VornicCore/realtime/Forget.h"

#include <bit>
#include <memory>
#include <new>
#include <type_traits>

namespace vornic {

static_assert(std::is_trivially_copyable_v<vornic_event>);

vornic_ring* vornic_ring_create(std::uint32_t capacity) noexcept {
    constexpr std::uint32_t smallest = 2;
    constexpr std::uint32_t largest = 0x80000000;
    if (capacity > largest) {
        return nullptr;
    }
    const std::uint32_t slots = std::bit_ceil(capacity < smallest ? smallest : capacity);
    std::unique_ptr<vornic_ring> ring(new (std::nothrow) vornic_ring{});
    if (ring == nullptr) {
        return nullptr;
    }
    ring->mask = slots - 1;
    ring->slots = new (std::nothrow) vornic_event[slots]();
    return ring->slots == nullptr ? nullptr : ring.release();
}

void vornic_ring_destroy(vornic_ring* ring) noexcept {
    if (ring != nullptr) {
        delete[] ring->slots;
        delete ring;
    }
}

bool vornic_ring_push(vornic_ring* ring, const vornic_event* event) VORNIC_REALTIME {
    const std::uint32_t head = ring->head.load(std::memory_order_relaxed);
    // Acquire: the consumer's copy out of the slot has ended before we write to it again.
    const std::uint32_t tail = ring->tail.load(std::memory_order_acquire);
    if (head - tail > ring->mask) {
        return false;
    }
    ring->slots[head & ring->mask] = *event;
    // Release: whoever sees the new count sees the whole event.
    ring->head.store(head + 1, std::memory_order_release);
    return true;
}

bool vornic_ring_pop(vornic_ring* ring, vornic_event* out) VORNIC_REALTIME {
    const std::uint32_t tail = ring->tail.load(std::memory_order_relaxed);
    const std::uint32_t head = ring->head.load(std::memory_order_acquire);
    if (tail == head) {
        return false;
    }
    vornic_event& slot = ring->slots[tail & ring->mask];
    *out = slot;
    // Place, pitch and time tell which key it was: the ring remembers none that it has handed over.
    forget(slot);
    ring->tail.store(tail + 1, std::memory_order_release);
    return true;
}

} // namespace vornic
