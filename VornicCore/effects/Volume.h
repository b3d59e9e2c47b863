#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <atomic>
#include <cstddef>

namespace vornic {

/// The user's volume, after room and limiter. A change glides over 8 ms, so that it makes no click;
/// at volume 1 sound passes to the bit. Thread: real-time, but `set`: any.
class Volume {
  public:
    /// The length of the glide in frames at 48 kHz.
    static constexpr std::size_t glideFrames = 384;

    /// The volume there is from the first frame on, limited as in set().
    explicit Volume(float volume = 1.0F) : target_(limited(volume)) {}

    /// Asks for a gain of 0 to 1; what lies outside is moved to the nearer end, and what is not a
    /// number counts as 0. Thread: any, never waits. The last one set before the first block is
    /// reached without a glide.
    void set(float volume) VORNIC_REALTIME {
        target_.store(limited(volume), std::memory_order_relaxed);
    }

    /// The gain last asked for. Thread: any.
    [[nodiscard]] float volume() const VORNIC_REALTIME {
        return target_.load(std::memory_order_relaxed);
    }

    /// Applies the volume to `frames` frames in place.
    void process(std::size_t frames, float* left, float* right) VORNIC_REALTIME;

  private:
    [[nodiscard]] static float limited(float volume) VORNIC_REALTIME {
        if (volume >= 1.0F) {
            return 1.0F;
        }
        return volume >= 0.0F ? volume : 0.0F;
    }

    std::atomic<float> target_;
    bool fresh_ = true;
    float from_ = 1.0F;
    float to_ = 1.0F;
    float gain_ = 1.0F;
    std::size_t glideLeft_ = 0;
};

} // namespace vornic
