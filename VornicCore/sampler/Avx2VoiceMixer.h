#pragma once

#include "VornicCore/sampler/VoiceMixer.h"

#include <cstdint>

#if defined(__x86_64__)

namespace vornic {

/// Whether `mixVoiceAvx2` may run on this processor. Thread: any but real-time.
bool hasAvx2() noexcept;

/// The plain mixer's work with vectors of eight frames. Differs from it by rounding only, and not
/// at all in where a voice stands and when it ends. Thread: real-time.
void mixVoiceAvx2(Voice& voice, const FadeCurve& fade, std::int64_t frames, float* left,
                  float* right) VORNIC_REALTIME;

} // namespace vornic

#endif
