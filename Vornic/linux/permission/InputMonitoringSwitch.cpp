#include "Vornic/linux/permission/InputMonitoringSwitch.h"

#include "Vornic/linux/permission/KeyGrant.h"

#include <algorithm>
#include <utility>

namespace vornic {

namespace {

constexpr const char* agreementText =
    "# The user of this computer agreed that Vornic, and with it every program of theirs, may "
    "read\n"
    "# its keyboards. To take that back, remove this file and restart the computer, or run\n"
    "# \"vornic-input-monitoring disable\" as root.\n";

constexpr const char* readerRuleText =
    "// The user of this computer agreed that Vornic may hear its keys, through vornic-keys. To "
    "take\n"
    "// that back, remove this file, or run \"vornic-input-monitoring disable\" as root.\n"
    "polkit.addRule(function(action, subject) {\n"
    "    if (action.id == \"org.vornic.Vornic.hear-keys\" && subject.local && subject.active) {\n"
    "        return polkit.Result.YES;\n"
    "    }\n"
    "});\n";

constexpr const char* readerAgreementText =
    "# Vornic may hear keys: 50-vornic.rules in /etc/polkit-1/rules.d says so, and this file that\n"
    "# it does. \"vornic-input-monitoring disable\", as root, removes both.\n";

constexpr const char* noAnswer = "The device manager did not answer: restart the computer once.";

std::string cannotWrite(const char* file) {
    return std::string("The file ") + file + " could not be written.";
}

std::string cannotRemove(const char* file) {
    return std::string("The file ") + file + " could not be removed.";
}

} // namespace

std::string InputMonitoringSwitch::enable() {
    return changes_.exists(InputMonitoringFiles::readerSocket) ? enableReader() : enableRule();
}

std::string InputMonitoringSwitch::disable() {
    // Polkit's word first: with it the reader lets go of the keyboards at once.
    for (const char* const file :
         {InputMonitoringFiles::readerRule, InputMonitoringFiles::readerAgreement}) {
        if (changes_.exists(file) && !changes_.remove(file)) {
            return cannotRemove(file);
        }
    }
    return disableRule();
}

std::string InputMonitoringSwitch::enableReader() {
    for (const auto& [file, text] :
         {std::pair{InputMonitoringFiles::readerRule, readerRuleText},
          std::pair{InputMonitoringFiles::readerAgreement, readerAgreementText}}) {
        if (!changes_.write(file, text)) {
            return cannotWrite(file);
        }
    }
    // Nobody else is to read keyboards for Vornic's sake any more.
    return changes_.exists(InputMonitoringFiles::agreement) ? disableRule() : std::string();
}

std::string InputMonitoringSwitch::enableRule() {
    if (std::ranges::none_of(InputMonitoringFiles::rules,
                             [this](const char* rule) { return changes_.exists(rule); })) {
        return "The rule 70-vornic.rules is not installed: install Vornic's package first.";
    }
    if (!changes_.write(InputMonitoringFiles::agreement, agreementText)) {
        return cannotWrite(InputMonitoringFiles::agreement);
    }
    return applyRule() ? std::string() : noAnswer;
}

std::string InputMonitoringSwitch::disableRule() {
    if (!changes_.remove(InputMonitoringFiles::agreement)) {
        return cannotRemove(InputMonitoringFiles::agreement);
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
