#include "Vornic/linux/permission/InputMonitoringSwitch.h"

#include "Vornic/linux/permission/KeyGrant.h"

#include <algorithm>

namespace vornic {

namespace {

constexpr const char* agreementText =
    "# The user of this computer agreed that Vornic, and with it every program of theirs, may "
    "read\n"
    "# its keyboards. To take that back, remove this file and restart the computer, or run\n"
    "# \"vornic-input-monitoring disable\" as root.\n";

constexpr const char* noAnswer = "The device manager did not answer: restart the computer once.";

} // namespace

std::string InputMonitoringSwitch::enable() {
    if (std::ranges::none_of(InputMonitoringFiles::rules,
                             [this](const char* rule) { return changes_.exists(rule); })) {
        return "The rule 70-vornic.rules is not installed: install Vornic's package first.";
    }
    if (!changes_.write(InputMonitoringFiles::agreement, agreementText)) {
        return std::string("The file ") + InputMonitoringFiles::agreement +
               " could not be written.";
    }
    return applyRule() ? std::string() : noAnswer;
}

std::string InputMonitoringSwitch::disable() {
    if (!changes_.remove(InputMonitoringFiles::agreement)) {
        return std::string("The file ") + InputMonitoringFiles::agreement +
               " could not be removed.";
    }
    // The device manager gives access and never takes it; what another program's rule gives comes
    // back when the rules are applied.
    for (const std::string& node : changes_.keyboards()) {
        changes_.dropUsers(node);
    }
    return applyRule() ? std::string() : noAnswer;
}

bool InputMonitoringSwitch::applyRule() {
    return changes_.run({"udevadm", "control", "--reload"}) &&
           changes_.run(
               {"udevadm", "trigger", "--subsystem-match=input", "--action=change", "--settle"});
}

} // namespace vornic
