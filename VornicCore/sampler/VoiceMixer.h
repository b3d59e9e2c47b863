#pragma once

#include "VornicCore/realtime/RealTime.h"
#include "VornicCore/sampler/FadeCurve.h"
#include "VornicCore/sampler/Voice.h"

#include <cstdint>

namespace vornic {

/// Adds `frames` frames of a voice that is not free to both buffers and moves the voice on; frees
/// its slot where its sample or its fade ends. Thread: real-time.
using VoiceMixer = void (*)(Voice& voice, const FadeCurve& fade, std::int64_t frames, float* left,
                            float* right) VORNIC_REALTIME;

/// The formulas as they stand, frame by frame: the measure for every faster mixer.
/// Thread: real-time.
void mixVoicePlain(Voice& voice, const FadeCurve& fade, std::int64_t frames, float* left,
                   float* right) VORNIC_REALTIME;

/// The fastest mixer for this processor. Asks the processor: choose once.
/// Thread: any but real-time.
VoiceMixer bestVoiceMixer() noexcept;

} // namespace vornic
