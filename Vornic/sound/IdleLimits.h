#pragma once

namespace vornic {

/// How long the output runs on without a key, in seconds. Thread: any.
struct IdleLimits {
    double wired = 30.0;
    /// Longer, because a Bluetooth link takes its time to come up again.
    double bluetooth = 300.0;
};

} // namespace vornic
