#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstddef>

namespace vornic {

/// A peak limiter for stereo sound at 48 kHz, without look-ahead: it delays nothing.
///
/// No sample leaves it above `ceiling`, and until one would, sound passes to the bit. When one
/// would, the gain falls at once, for both channels alike (the image stays where it is), to just
/// meet the ceiling: the wave flattens only until its crest is reached. The gain then holds, so
/// that the waves that follow keep their shape, and rises back to exactly 1.
///
/// A sample that is not a number or infinite becomes silence and changes nothing else. Has no
/// memory to allocate. Thread: real-time.
class Limiter {
  public:
    /// -0.18 dBFS: full scale less a margin for what follows, since rounding to integers or
    /// converting the rate can lift a peak a little above its sample.
    static constexpr float ceiling = 0.98F;
    /// 12 ms: from one crest to the next of a wave down to 42 Hz, the lowest that keys make.
    static constexpr std::size_t holdFrames = 576;
    /// Time constant of the rise back to 1: short enough not to hide the next key.
    static constexpr double releaseMs = 60.0;
    /// The gain never falls below this (-40 dB): a single wild sample is cut off, and must not
    /// silence what follows it for long.
    static constexpr float lowestGain = 0.01F;

    Limiter();

    /// Limits `frames` frames in place.
    void process(std::size_t frames, float* left, float* right) VORNIC_REALTIME;

    /// Forgets the past. Only while process() is not running.
    void reset() VORNIC_REALTIME;

    /// The gain that was last applied, `lowestGain` to 1; exactly 1 while sound passes untouched.
    [[nodiscard]] float gain() const VORNIC_REALTIME { return gain_; }

  private:
    void limit(float& left, float& right) VORNIC_REALTIME;

    float release_;
    float gain_ = 1.0F;
    std::size_t hold_ = 0;
};

} // namespace vornic
