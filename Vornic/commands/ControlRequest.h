#pragma once

#include <string>
#include <vector>

namespace vornic {

/// Ask the running copy. Thread: any.
struct ControlRequest {
    /// The command as it was typed.
    std::vector<std::string> words;
};

} // namespace vornic
