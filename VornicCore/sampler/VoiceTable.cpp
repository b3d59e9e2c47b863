#include "VornicCore/sampler/VoiceTable.h"

#include "VornicCore/realtime/Fatal.h"

#include <algorithm>
#include <limits>

namespace vornic {

VoiceTable::Outcome VoiceTable::start(const vornic_event& event,
                                      std::uint64_t index) VORNIC_REALTIME {
    if (event.samples == nullptr || event.length < 2) {
        return Outcome::ignored;
    }
    Outcome outcome = Outcome::started;
    if (sounding() >= maxVoices) {
        steal();
        outcome = Outcome::stole;
    }
    Voice* const slot = slotForNewVoice();
    if (slot == nullptr) {
        return Outcome::dropped;
    }
    require(counter_ < std::numeric_limits<std::uint64_t>::max(), "too many voices to count");
    ++counter_;
    *slot = {.data = event.samples,
             .length = event.length,
             .rate = static_cast<double>(event.rate),
             .gainLeft = event.gain_left,
             .gainRight = event.gain_right,
             .order = counter_,
             .itd = static_cast<double>(event.itd_frames),
             .farLowpass = event.far_lowpass,
             .farEar = event.far_ear,
             .event = index};
    return outcome;
}

void VoiceTable::steal() VORNIC_REALTIME {
    Voice* oldest = nullptr;
    for (Voice& voice : slots_) {
        if (voice.sounding() && (oldest == nullptr || voice.order < oldest->order)) {
            oldest = &voice;
        }
    }
    if (oldest != nullptr) {
        oldest->fadeLeft = fadeFrames_;
    }
}

Voice* VoiceTable::slotForNewVoice() VORNIC_REALTIME {
    Voice* nearestItsEnd = nullptr;
    for (Voice& voice : slots_) {
        if (voice.data == nullptr) {
            return &voice;
        }
        if (voice.fading() &&
            (nearestItsEnd == nullptr || voice.fadeLeft < nearestItsEnd->fadeLeft)) {
            nearestItsEnd = &voice;
        }
    }
    return nearestItsEnd;
}

std::int64_t VoiceTable::sounding() const VORNIC_REALTIME {
    return std::ranges::count_if(slots_, &Voice::sounding);
}

std::int64_t VoiceTable::fading() const VORNIC_REALTIME {
    return std::ranges::count_if(slots_, &Voice::fading);
}

std::uint64_t VoiceTable::settled(std::uint64_t popped) const VORNIC_REALTIME {
    for (const Voice& voice : slots_) {
        if (voice.data != nullptr) {
            popped = std::min(popped, voice.event);
        }
    }
    return popped;
}

} // namespace vornic
