#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vornic {

/// A delay of a fixed number of frames, worked on in chunks: read() gives the oldest frames,
/// write() puts as many new ones in their place. Memory is allocated at construction only.
/// Thread: real-time, once it is made.
class DelayLine {
  public:
    /// Room for delays of 1 to `capacity` frames; the length is `capacity` until set.
    explicit DelayLine(std::size_t capacity) : frames_(capacity, 0.0F), length_(capacity) {}

    /// Sets the delay in frames, 1 to the capacity, and empties the line.
    void restart(std::size_t length) VORNIC_REALTIME {
        length_ = std::clamp<std::size_t>(length, 1, frames_.size());
        clear();
    }

    void clear() VORNIC_REALTIME {
        std::fill_n(frames_.begin(), length_, 0.0F);
        position_ = 0;
    }

    [[nodiscard]] std::size_t length() const VORNIC_REALTIME { return length_; }

    /// Copies the `count` oldest frames to `out`; `count` is at most the length.
    void read(std::size_t count, float* out) const VORNIC_REALTIME {
        const std::size_t first = std::min(count, length_ - position_);
        out = std::copy_n(frames_.data() + position_, first, out);
        std::copy_n(frames_.data(), count - first, out);
    }

    /// Replaces the `count` oldest frames by `in`; `count` is at most the length.
    void write(std::size_t count, const float* in) VORNIC_REALTIME {
        const std::size_t first = std::min(count, length_ - position_);
        std::copy_n(in, first, frames_.data() + position_);
        std::copy_n(in + first, count - first, frames_.data());
        position_ += count;
        if (position_ >= length_) {
            position_ -= length_;
        }
    }

    /// Adds `gain` times the `count` frames that lie `delay` frames before the last `count` written
    /// to `out`; `delay` + `count` is at most the length.
    void addTap(std::size_t delay, float gain, std::size_t count,
                float* out) const VORNIC_REALTIME {
        std::size_t from = position_ + length_ - delay - count;
        if (from >= length_) {
            from -= length_;
        }
        const std::size_t first = std::min(count, length_ - from);
        addScaled(frames_.data() + from, gain, first, out);
        addScaled(frames_.data(), gain, count - first, out + first);
    }

  private:
    static void addScaled(const float* in, float gain, std::size_t count,
                          float* out) VORNIC_REALTIME {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] += gain * in[i];
        }
    }

    std::vector<float> frames_;
    std::size_t length_;
    std::size_t position_ = 0;
};

} // namespace vornic
