#include "tests/support/ExpectRealTimeSafe.h"

#include "tests/support/RealTimeGuard.h"
#include "tests/support/SystemCallFilter.h"

#include <gtest/gtest.h>

#include <string>

namespace vornic {

namespace {

/// What the guard counted, empty if nothing.
std::string countedIn(const std::function<void()>& work) {
    std::int64_t allocations = 0;
    std::int64_t frees = 0;
    std::int64_t locks = 0;
    std::int64_t waits = 0;
    const char* first = nullptr;
    {
        const RealTimeGuard guard;
        work();
        allocations = guard.allocations();
        frees = guard.frees();
        locks = guard.locks();
        waits = guard.waits();
        first = guard.first();
    }
    if (first == nullptr) {
        return {};
    }
    return std::to_string(allocations) + " allocations, " + std::to_string(frees) + " frees, " +
           std::to_string(locks) + " locks, " + std::to_string(waits) + " waits; the first was " +
           first;
}

} // namespace

void expectRealTimeSafe(const std::function<void()>& work, std::source_location where) {
    const auto expectNothing = [&](const std::string& found) {
        if (!found.empty()) {
            ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line()))
                << "not fit for the audio thread: " << found;
        }
    };
    if (RealTimeGuard::active()) {
        expectNothing(forbiddenSystemCall(work));
    }
    expectNothing(countedIn(work));
}

} // namespace vornic
