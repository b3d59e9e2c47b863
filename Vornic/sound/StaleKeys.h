#pragma once

#include "VornicCore/realtime/RealTime.h"

#include <cstdint>

/// Keeps keys that could not be heard in time from sounding all at once when the output comes back:
/// after a start that took long, a stalled sound server, a sleep of the machine. Nanoseconds of the
/// monotonic clock throughout.
namespace vornic::StaleKeys {

/// A key that sounds later than this after it was pressed only irritates; a start of the output
/// from sleep usually takes a tenth of it.
inline constexpr std::uint64_t limit = 250'000'000;

/// Keys stamped before the returned time are stale in the render call at `now`, when the call
/// before it was at `previous` (0 = there was none). 0 means that none is: without an interruption
/// between the two calls a late key was late at its source, and is heard.
constexpr std::uint64_t before(std::uint64_t previous, std::uint64_t now) VORNIC_REALTIME {
    const bool interrupted = now > previous && now - previous > limit;
    return interrupted ? now - limit : 0;
}

} // namespace vornic::StaleKeys
