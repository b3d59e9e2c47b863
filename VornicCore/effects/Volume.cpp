#include "VornicCore/effects/Volume.h"

namespace vornic {

void Volume::process(std::size_t frames, float* left, float* right) VORNIC_REALTIME {
    const float target = volume();
    if (fresh_) {
        fresh_ = false;
        gain_ = to_ = target;
    }
    if (target != to_) {
        from_ = gain_;
        to_ = target;
        glideLeft_ = glideFrames;
    }
    std::size_t done = 0;
    for (; done < frames && glideLeft_ > 0; ++done) {
        --glideLeft_;
        gain_ = to_ + (from_ - to_) * (static_cast<float>(glideLeft_) / glideFrames);
        left[done] *= gain_;
        right[done] *= gain_;
    }
    if (gain_ == 1.0F) {
        return;
    }
    for (; done < frames; ++done) {
        left[done] *= gain_;
        right[done] *= gain_;
    }
}

} // namespace vornic
