#pragma once

#include <optional>

namespace vornic {

/// `vornic autostart`: start with the session, or no longer; absent: only say whether it does.
struct AutostartRequest {
    std::optional<bool> on;
};

} // namespace vornic
