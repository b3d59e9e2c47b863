#include "tests/support/RealTimeGuard.h"

#include "tests/support/RealTimeCounts.h"

namespace vornic {

RealTimeCounts& RealTimeCounts::ofThisThread() noexcept {
    static thread_local constinit RealTimeCounts counts;
    return counts;
}

bool RealTimeGuard::active() {
    return VORNIC_GUARD_ACTIVE != 0;
}

RealTimeGuard::RealTimeGuard() {
    RealTimeCounts::ofThisThread() = {};
    RealTimeCounts::ofThisThread().counting = true;
}

RealTimeGuard::~RealTimeGuard() {
    RealTimeCounts::ofThisThread().counting = false;
}

std::int64_t RealTimeGuard::allocations() const {
    return RealTimeCounts::ofThisThread().allocations;
}

std::int64_t RealTimeGuard::frees() const {
    return RealTimeCounts::ofThisThread().frees;
}

std::int64_t RealTimeGuard::locks() const {
    return RealTimeCounts::ofThisThread().locks;
}

std::int64_t RealTimeGuard::waits() const {
    return RealTimeCounts::ofThisThread().waits;
}

const char* RealTimeGuard::first() const {
    return RealTimeCounts::ofThisThread().first;
}

} // namespace vornic
