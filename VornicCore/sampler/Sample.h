#pragma once

#include <cstdint>

namespace vornic {

/// A view of one rendered mono sound. The bank that made it owns the frames, which stay valid and
/// unchanged until that bank is destroyed. Thread: any.
struct Sample {
    /// Mono frames at the sampler's rate.
    const float* data;
    /// Number of frames.
    std::int64_t length;
};

} // namespace vornic
