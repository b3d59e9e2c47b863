#pragma once

#include <array>

namespace vornic {

/// Where the parts of "Turn on Input Monitoring…" lie. The rule is installed with the program and
/// does nothing until the agreement exists. Thread: any.
struct InputMonitoringFiles {
    static constexpr std::array rules{"/usr/lib/udev/rules.d/70-vornic.rules",
                                      "/usr/local/lib/udev/rules.d/70-vornic.rules",
                                      "/etc/udev/rules.d/70-vornic.rules"};
    static constexpr const char* agreement = "/etc/vornic/input-monitoring";
};

} // namespace vornic
