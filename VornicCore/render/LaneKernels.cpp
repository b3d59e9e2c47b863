#include "VornicCore/render/LaneKernels.h"

namespace vornic {

const LaneKernels& laneKernels() {
#if defined(__x86_64__)
    static const bool hasAvx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    if (hasAvx2) {
        return avx2LaneKernels();
    }
#endif
    return portableLaneKernels();
}

} // namespace vornic
