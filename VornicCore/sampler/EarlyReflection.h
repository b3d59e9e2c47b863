#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <array>
#include <cstdint>

namespace vornic {

/// The sound that the desk throws back: two short, dull echoes of the mono sum, a little different
/// on either side. Thread: real-time.
class EarlyReflection {
  public:
    explicit EarlyReflection(double sampleRate) noexcept;

    /// Adds the echoes at `level` (0 = off) to `frames` frames of both buffers; `damp` smooths
    /// them. The history grows even while they are off, so that they have one when turned on.
    void process(std::int64_t frames, float* left, float* right, float level,
                 float damp) VORNIC_REALTIME;

    /// Forgets what was played.
    void clear() VORNIC_REALTIME;

    static constexpr std::int64_t echoLength = 1024;

  private:
    float echoBefore(std::int64_t frames) const VORNIC_REALTIME;

    std::array<float, echoLength> echo_{};
    std::int64_t echoWrite_ = 0;
    float echoState1_ = 0.0F;
    float echoState2_ = 0.0F;
    std::int64_t delay1_; // frames
    std::int64_t delay2_;
};

} // namespace vornic
