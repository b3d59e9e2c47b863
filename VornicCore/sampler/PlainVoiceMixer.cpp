#include "VornicCore/sampler/Interpolation.h"
#include "VornicCore/sampler/VoiceMixer.h"

namespace vornic {

void mixVoicePlain(Voice& voice, const FadeCurve& fade, std::int64_t frames, float* left,
                   float* right) VORNIC_REALTIME {
    constexpr std::int32_t leftIsFar = 1;
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        if (voice.position >= static_cast<double>(voice.length - 1)) {
            voice = Voice{};
            return;
        }
        float envelope = 1.0F;
        if (voice.fadeLeft >= 0) {
            if (voice.fadeLeft == 0) {
                voice = Voice{};
                return;
            }
            envelope = FadeCurve::at(voice.fadeLeft, fade.frames());
            --voice.fadeLeft;
        }
        const float direct = interpolate(voice.data, voice.length, voice.position) * envelope;
        if (voice.farEar == 0) {
            left[frame] += direct * voice.gainLeft;
            right[frame] += direct * voice.gainRight;
        } else {
            float far =
                interpolate(voice.data, voice.length, voice.position - voice.itd) * envelope;
            if (voice.farLowpass > 0.0F) {
                voice.farState += voice.farLowpass * (far - voice.farState);
                far = voice.farState;
            }
            left[frame] += (voice.farEar == leftIsFar ? far : direct) * voice.gainLeft;
            right[frame] += (voice.farEar == leftIsFar ? direct : far) * voice.gainRight;
        }
        voice.position += voice.rate;
    }
}

} // namespace vornic
