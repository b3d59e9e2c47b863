// Compiled for AVX2 and fused multiply-add. What it includes has internal linkage or no code, so
// that no function of this file's can stand in for another's on a lesser processor.
#include "VornicCore/render/LaneStages.h"

namespace vornic {

const LaneKernels& avx2LaneKernels() {
    static constexpr LaneKernels kernels = lanestages::kernels();
    return kernels;
}

} // namespace vornic
