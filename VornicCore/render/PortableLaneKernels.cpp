#include "VornicCore/render/LaneStages.h"

namespace vornic {

const LaneKernels& portableLaneKernels() {
    static constexpr LaneKernels kernels = lanestages::kernels();
    return kernels;
}

} // namespace vornic
