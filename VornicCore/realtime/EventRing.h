#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstdint>

namespace vornic {

/// One request to play a sample, copied whole into and out of the ring.
struct vornic_event {
    /// Mono frames; whoever pushes the event keeps them alive while they may be read.
    const float* samples;
    /// Frames in `samples`.
    std::uint32_t length;
    /// Gains after the pan law.
    float gain_left;
    float gain_right;
    /// Step of the read position: 1 plays at the recorded speed.
    float rate;
    /// The key event's monotonic time stamp in nanoseconds, 0 = unknown.
    std::uint64_t nanos;
    /// Delay of the far ear, in frames.
    float itd_frames;
    /// Coefficient of the far ear's low-pass, 0 = none.
    float far_lowpass;
    /// 0 = none, 1 = the left ear is far, 2 = the right ear is far.
    std::int32_t far_ear;
};

/// A lock-free queue of events from one producer thread to one consumer thread. Thread: any, where
/// nothing else is said.
struct vornic_ring;

/// A ring for the smallest power of two that is at least 2 and at least `capacity` events; null if
/// memory is short or that power needs more than 32 bits. Allocates: not for the audio thread.
[[nodiscard]] vornic_ring* vornic_ring_create(std::uint32_t capacity) noexcept;

/// Frees the ring; null is ignored. Neither thread may use the ring any more.
void vornic_ring_destroy(vornic_ring* ring) noexcept;

/// Copies the event in. False, with nothing changed, when the ring is full. Wait-free.
/// Thread: key, the one producer.
[[nodiscard]] bool vornic_ring_push(vornic_ring* ring, const vornic_event* event) VORNIC_REALTIME;

/// Moves the oldest event to `out`, and nothing of it stays behind. False, with `out` unchanged,
/// when the ring is empty. Wait-free. Thread: real-time, the one consumer.
[[nodiscard]] bool vornic_ring_pop(vornic_ring* ring, vornic_event* out) VORNIC_REALTIME;

} // namespace vornic
