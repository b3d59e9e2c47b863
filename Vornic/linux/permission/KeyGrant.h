#pragma once

#include <array>
#include <string>

namespace vornic {

/// Where the parts of "Turn on Input Monitoring…" lie. What is installed with the program does
/// nothing until the user has agreed. Thread: any.
struct InputMonitoringFiles {
    /// Where the key reader listens, if this system has started it.
    static constexpr const char* readerSocket = "/run/vornic/keys";
    /// What lets Vornic hear through it, read by polkit, and what tells everybody that it does:
    /// polkit's folder is closed to users.
    static constexpr const char* readerRule = "/etc/polkit-1/rules.d/50-vornic.rules";
    static constexpr const char* readerAgreement = "/etc/vornic/key-reader";

    /// Without the reader: the rule of the device manager, and what switches it on.
    static constexpr std::array rules{"/usr/lib/udev/rules.d/70-vornic.rules",
                                      "/usr/local/lib/udev/rules.d/70-vornic.rules",
                                      "/etc/udev/rules.d/70-vornic.rules"};
    static constexpr const char* agreement = "/etc/vornic/input-monitoring";
};

/// Whether the user has been granted access to keyboards, in whatever way: the rule that Vornic
/// brings is switched on, or the user belongs to the group of the nodes, even if this session began
/// before that. Takes a look into the user database. Thread: any.
class KeyGrant {
  public:
    /// True when this process's user has a grant.
    bool given() const;

    /// Whether the user was put into the nodes' group after this session began, so that this
    /// process lacks it.
    static bool lacksGroup();

    /// The group of the nodes.
    static constexpr const char* group = "input";

    /// Whether the user database counts the user with this number among the members of `group`.
    static bool isMember(unsigned user, const std::string& group);
};

} // namespace vornic
