#include "Vornic/linux/microphone/CaptureClock.h"

#include <algorithm>

namespace vornic {

std::int64_t CaptureClock::lostBeforeLast(std::int64_t ticks, std::int64_t frames) VORNIC_REALTIME {
    if (last_ == 0) {
        begin_ = ticks;
    }
    std::int64_t behind = ticks - begin_ - heard_;
    if (behind < 0) {
        begin_ = ticks - heard_;
        behind = 0;
    }
    std::int64_t lost = std::min(behind_, behind);
    // Whole cycles are lost; less than half of one is what a resampler keeps back.
    if (lost * 2 < last_) {
        lost = 0;
    }
    heard_ += lost + frames;
    behind_ = behind - lost;
    last_ = frames;
    return lost;
}

} // namespace vornic
