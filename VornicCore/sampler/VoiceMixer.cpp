#include "VornicCore/sampler/VoiceMixer.h"

namespace vornic {

VoiceMixer bestVoiceMixer() noexcept {
    return mixVoicePlain;
}

} // namespace vornic
