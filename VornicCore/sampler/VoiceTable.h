#pragma once

#include "VornicCore/realtime/EventRing.h"
#include "VornicCore/realtime/RealTime.h"
#include "VornicCore/sampler/Voice.h"

#include <array>
#include <cstdint>

namespace vornic {

/// The slots of the sampler, and which of them a new voice gets. Thread: real-time.
class VoiceTable {
  public:
    /// The most voices that sound at once; the slots beyond hold voices that fade out.
    static constexpr int maxVoices = 48;
    static constexpr int slotCount = 56;
    using Slots = std::array<Voice, slotCount>;

    /// What became of an event.
    enum class Outcome : std::uint8_t {
        /// Nothing to play.
        ignored,
        started,
        /// Started, and the oldest voice fades out for it.
        stole,
        /// Every slot was busy and none was fading.
        dropped,
    };

    /// `fadeFrames`: length of the fade-out of a stolen voice. `started`: voices started before.
    explicit VoiceTable(std::int64_t fadeFrames, std::uint64_t started = 0) noexcept
        : fadeFrames_(fadeFrames), counter_(started) {}

    /// Starts a voice for an event with `index` events queued before it.
    Outcome start(const vornic_event& event, std::uint64_t index) VORNIC_REALTIME;

    /// Frees every slot.
    void clear() VORNIC_REALTIME { slots_.fill(Voice{}); }

    Slots& slots() VORNIC_REALTIME { return slots_; }
    const Slots& slots() const VORNIC_REALTIME { return slots_; }

    /// Voices that sound and are not fading.
    std::int64_t sounding() const VORNIC_REALTIME;
    std::int64_t fading() const VORNIC_REALTIME;

    /// Of `popped` events taken from the queue, how many came before the first one that a voice
    /// still plays.
    std::uint64_t settled(std::uint64_t popped) const VORNIC_REALTIME;

  private:
    void steal() VORNIC_REALTIME;
    Voice* slotForNewVoice() VORNIC_REALTIME;

    Slots slots_;
    std::int64_t fadeFrames_;
    std::uint64_t counter_;
};

} // namespace vornic
