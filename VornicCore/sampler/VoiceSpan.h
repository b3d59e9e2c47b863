#pragma once

#include "VornicCore/realtime/RealTime.h"
#include "VornicCore/sampler/Voice.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vornic {

/// How far a voice plays within a buffer, found at once instead of frame by frame.
/// Thread: real-time.
struct VoiceSpan {
    /// Whether `position + k * rate` is the position that k single steps lead to, to the last bit.
    ///
    /// The rate was a float: a 24-bit number times a power of two, `unit`. A position that started
    /// at 0 and grew by the rate alone is a whole number of such units, and while it stays below
    /// 2^53 of them, every sum and product is exact. As a unit is more than rate / 2^24, that holds
    /// below rate * 2^29.
    static bool isExact(const Voice& voice, std::int64_t frames) VORNIC_REALTIME {
        const double end = voice.position + static_cast<double>(frames) * voice.rate;
        return voice.rate > 0.0 && voice.position >= 0.0 && end < voice.rate * 0x1p29;
    }

    /// Of the next `frames` frames, how many the voice sounds for; `isExact` must hold. It ends
    /// before the first frame at which it has reached its sample's last frame, or has faded out.
    static std::int64_t sounding(const Voice& voice, std::int64_t frames) VORNIC_REALTIME {
        const auto last = static_cast<double>(voice.length - 1);
        const auto positionAt = [&](std::int64_t frame) {
            return voice.position + static_cast<double>(frame) * voice.rate;
        };
        std::int64_t count = frames;
        if (frames > 0 && positionAt(frames - 1) >= last) {
            // The quotient is rounded, so it may miss by one: the exact positions decide.
            const double steps = std::ceil(std::max(0.0, (last - voice.position) / voice.rate));
            count = std::min(static_cast<std::int64_t>(steps), frames);
            while (count > 0 && positionAt(count - 1) >= last) {
                --count;
            }
            while (count < frames && positionAt(count) < last) {
                ++count;
            }
        }
        return voice.fadeLeft >= 0 ? std::min(count, voice.fadeLeft) : count;
    }

    /// Moves the voice on by the `sounded` frames that it sounded for, and clears its slot if that
    /// was not the whole buffer.
    static void advance(Voice& voice, std::int64_t sounded, std::int64_t frames) VORNIC_REALTIME {
        if (sounded < frames) {
            voice = Voice{};
            return;
        }
        voice.position += static_cast<double>(sounded) * voice.rate;
        if (voice.fadeLeft >= 0) {
            voice.fadeLeft -= sounded;
        }
    }
};

} // namespace vornic
