#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstdint>

/// Keeps keys that waited for a stalled sound server, or while the machine slept, from sounding all
/// at once when it goes on. Keys that wait for a device to start all sound, however long a
/// Bluetooth link takes to wake. Nanoseconds of the monotonic clock throughout. Thread: real-time.
namespace vornic::StaleKeys {

/// A key that sounds later than this after it was pressed only irritates.
inline constexpr std::uint64_t limit = 250'000'000;

/// Keys stamped before the returned time are stale in the render call at `now`. The call before it
/// was at `previous` (0 = there was none since the stream began), and the output was last asked to
/// start at `startRequest` (0 = never). 0 means that none is: without an interruption between the
/// two calls a late key was late at its source, and is heard.
constexpr std::uint64_t before(std::uint64_t previous, std::uint64_t startRequest,
                               std::uint64_t now) VORNIC_REALTIME {
    if (previous == 0 || now <= previous || now - previous <= limit) {
        return 0;
    }
    // A key asks for the start right after it was pressed, and those that follow wait for the
    // device. What was there long before the request had waited for a server.
    const std::uint64_t end = startRequest > previous && startRequest < now ? startRequest : now;
    return end > limit ? end - limit : 0;
}

} // namespace vornic::StaleKeys
