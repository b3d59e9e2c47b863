#pragma once

#include "VornicCore/effects/ReverbNetwork.h"
#include "VornicCore/effects/Room.h"
#include "VornicCore/realtime/RealTime.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace vornic {

/// The room that the listener hears around the keyboard: output = dry · (1 - m) + wet · m, with the
/// room's mix m and a wet response of unit energy (see ReverbNetwork). The dry sound is never
/// delayed. In the room `dry` the sound passes untouched, to the bit and at no cost; in the others
/// a room that has rung out costs a look at the input.
///
/// The sound fades out of the old room and into the new one, 10 ms each, without a click; the tail
/// of the old room is gone then. The room chosen before the first block is there from the first
/// frame. Thread: real-time, but where it says any.
class RoomReverb {
  public:
    /// The length of each of the two fades, in frames at 48 kHz.
    static constexpr std::size_t fadeFrames = 480;

    explicit RoomReverb(Room room = Room::dry) : target_(room), room_(room) {}

    /// Asks for a room; the audio thread takes it over at its next block. Thread: any, never waits.
    void setRoom(Room room) VORNIC_REALTIME { target_.store(room, std::memory_order_relaxed); }

    /// The room last asked for. Thread: any.
    [[nodiscard]] Room room() const VORNIC_REALTIME {
        return target_.load(std::memory_order_relaxed);
    }

    /// Puts `frames` frames of sound at 48 kHz into the room, in place. Samples that are not finite
    /// never enter the room (the dry path passes them on).
    void process(std::size_t frames, float* left, float* right) VORNIC_REALTIME;

    /// Empties the room, as if just built. Only while process() is not running.
    void reset() VORNIC_REALTIME;

    /// True when the sound passes untouched.
    [[nodiscard]] bool isBypassed() const VORNIC_REALTIME { return phase_ == Phase::bypassed; }

    /// True when only the dry sound needs work: bypassed, or rung out.
    [[nodiscard]] bool isIdle() const VORNIC_REALTIME {
        return isBypassed() || network_.isSilent();
    }

  private:
    enum class Phase : std::uint8_t { fresh, bypassed, fadingIn, steady, fadingOut };
    using Chunk = std::array<float, ReverbNetwork::chunk>;

    void followTarget(bool silent) VORNIC_REALTIME;
    void enter(Room room, float send) VORNIC_REALTIME;
    void processChunk(std::size_t count, float* left, float* right) VORNIC_REALTIME;

    std::atomic<Room> target_;
    ReverbNetwork network_;
    Room room_;
    Phase phase_ = Phase::fresh;
    float mix_ = 0.0F;
    // How much of the sound enters the room, and how much of the room is heard, 0 to 1.
    float send_ = 0.0F;
    float hearing_ = 1.0F;
};

} // namespace vornic
