#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <vector>

namespace vornic {

/// The fade-out of a stolen voice: a quarter cosine, from 1 at its first frame to almost 0 at its
/// last one. Thread: any, made once; real-time reads it.
class FadeCurve {
  public:
    /// Envelope with `fadeLeft` of `fadeFrames` frames to go.
    static float at(std::int64_t fadeLeft, std::int64_t fadeFrames) VORNIC_REALTIME {
        const double done = 1.0 - static_cast<double>(fadeLeft) / static_cast<double>(fadeFrames);
        return static_cast<float>(std::cos(done * std::numbers::pi / 2.0));
    }

    /// Computes the table. Allocates: not for the audio thread.
    explicit FadeCurve(std::int64_t fadeFrames) : values_(static_cast<std::size_t>(fadeFrames)) {
        for (std::int64_t done = 0; done < fadeFrames; ++done) {
            values_[static_cast<std::size_t>(done)] = at(fadeFrames - done, fadeFrames);
        }
    }

    /// Frames of a whole fade.
    std::int64_t frames() const VORNIC_REALTIME {
        return static_cast<std::int64_t>(values_.size());
    }

    /// The envelope from here to the end, with `fadeLeft` (1 to `frames()`) frames to go.
    const float* from(std::int64_t fadeLeft) const VORNIC_REALTIME {
        return values_.data() + (frames() - fadeLeft);
    }

  private:
    std::vector<float> values_;
};

} // namespace vornic
