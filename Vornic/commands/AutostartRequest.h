#pragma once

#include <optional>

namespace vornic {

/// `vornic autostart`: start with the session, or no longer; absent: only say whether it does.
/// Thread: any.
struct AutostartRequest {
    std::optional<bool> on;
};

} // namespace vornic
