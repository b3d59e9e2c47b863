#pragma once

#include "VornicCore/sampler/VoiceMixer.h"

#if defined(__x86_64__)

namespace vornic {

/// Whether `mixVoiceAvx2` may run on this processor.
bool hasAvx2() noexcept;

/// The plain mixer's work with vectors of eight frames. Differs from it by rounding only, and not
/// at all in where a voice stands and when it ends.
void mixVoiceAvx2(Voice& voice, const FadeCurve& fade, std::int64_t frames, float* left,
                  float* right) VORNIC_REALTIME;

} // namespace vornic

#endif
