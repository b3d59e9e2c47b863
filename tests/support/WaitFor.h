#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace vornic {

/// Waits until `condition` holds, looking again every half millisecond; false when it did not
/// within `limit`.
inline bool waitFor(const std::function<bool()>& condition,
                    std::chrono::milliseconds limit = std::chrono::seconds(10)) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return condition();
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    return true;
}

} // namespace vornic
