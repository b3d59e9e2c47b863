#include "VornicCore/sampler/VoiceMixer.h"

#include "VornicCore/sampler/Avx2VoiceMixer.h"

namespace vornic {

VoiceMixer bestVoiceMixer() noexcept {
#if defined(__x86_64__)
    if (hasAvx2()) {
        return mixVoiceAvx2;
    }
#endif
    return mixVoicePlain;
}

} // namespace vornic
