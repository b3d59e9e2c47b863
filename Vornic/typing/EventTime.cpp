#include "Vornic/typing/EventTime.h"

#include "VornicCore/realtime/Fatal.h"

namespace vornic {

namespace {

constexpr std::uint64_t plausibleNanos = 1'000'000'000;

bool plausible(std::uint64_t time, std::uint64_t now) {
    return now >= time && now - time < plausibleNanos;
}

} // namespace

std::uint64_t EventTime::nanos(std::uint64_t stamp) {
    const std::uint64_t now = clock_.nanos();
    if (stamp == 0) {
        return now;
    }
    const bool direct = plausible(stamp, now);
    if (!stampIsTicks_) {
        stampIsTicks_ = !direct;
    }
    if (!*stampIsTicks_) {
        return direct ? stamp : now;
    }
    const std::uint64_t converted = fromTicks(stamp);
    return plausible(converted, now) ? converted : now;
}

std::uint64_t EventTime::fromTicks(std::uint64_t stamp) const {
    require(timebase_.denom != 0, "the host clock's timebase divides by zero");
    const std::uint64_t whole = stamp / timebase_.denom;
    const std::uint64_t rest = stamp - whole * timebase_.denom;
    // The rest is below 32 bits, so its product fits.
    const std::uint64_t fraction = rest * timebase_.numer / timebase_.denom;
    std::uint64_t product = 0;
    std::uint64_t sum = 0;
    require(!__builtin_mul_overflow(whole, std::uint64_t{timebase_.numer}, &product) &&
                !__builtin_add_overflow(product, fraction, &sum),
            "a key event's time overflows");
    return sum;
}

} // namespace vornic
