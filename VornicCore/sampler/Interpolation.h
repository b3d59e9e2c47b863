#pragma once

#include "VornicCore/realtime/IntegerPart.h"
#include "VornicCore/realtime/RealTime.h"

#include <cstdint>

namespace vornic {

/// The sample's value at a fractional position: the four-point Catmull-Rom cubic, with silence
/// around the sample. Positions between -1 and 0 use frame 0 and a negative fraction. A position
/// that is not finite, or beyond 64 bits, is fatal. Thread: real-time.
inline float interpolate(const float* data, std::int64_t length, double position) VORNIC_REALTIME {
    const std::int64_t i = requireIntegerPart(position, "voice position out of range");
    // All four frames lie outside; also keeps i - 1 and i + 2 from overflowing.
    if (i < -2 || i > length) {
        return 0.0F;
    }
    const auto frame = [&](std::int64_t index) {
        return index >= 0 && index < length ? data[index] : 0.0F;
    };
    const auto t = static_cast<float>(position - static_cast<double>(i));
    const float x0 = frame(i);
    if (t == 0.0F) {
        return x0;
    }
    const float before = frame(i - 1);
    const float x1 = frame(i + 1);
    const float x2 = frame(i + 2);
    const float c1 = (x1 - before) * 0.5F;
    const float c2 = before - 2.5F * x0 + 2.0F * x1 - 0.5F * x2;
    const float c3 = (x2 - before) * 0.5F + (x0 - x1) * 1.5F;
    return x0 + ((c3 * t + c2) * t + c1) * t;
}

} // namespace vornic
