#pragma once

#include "Vornic/ports/KeyTap.h"
#include "Vornic/typing/KeySource.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// What `vornic doctor` has found out about the computer and the session. Thread: main.
struct DoctorFacts {
    KeySourceKind keySource = KeySourceKind::none;
    /// Why there is no source of keys; empty when there is one.
    std::string keyProblem;
    TapState tapState = TapState::needsPermission;
    /// Where the keys come from.
    std::string tap;
    /// Whether somebody notices Alt+Super+K: the X server, or whoever reads the keyboards.
    bool hotKeyRegistered = false;
    /// Why there is no sound; empty when there is.
    std::string soundProblem;
    std::string soundDevice;
    std::size_t packs = 0;
    std::string packFolder;
    /// Whether there is a microphone whose use can be told.
    bool microphone = false;
    /// Whether the key reader or the rule for the keyboards is installed, and whether hearing keys
    /// is agreed to.
    bool ruleInstalled = false;
    bool agreed = false;
    /// The command that switches it on without a question.
    std::string turnOnCommand;
    /// Whether somebody in this session asks for an administrator's password when a program needs
    /// it; absent where that was not looked at.
    std::optional<bool> passwordAgent;
    /// Whether there is a session's D-Bus at all.
    bool sessionBus = false;
    /// Whether somebody says that they show tray icons.
    bool tray = false;
    /// Whether Vornic's icon is among them; absent while Vornic does not run.
    std::optional<bool> trayHasVornic;
    /// Whether the accessibility bus tells about password fields.
    bool accessibility = false;
    /// Version of the desktop portal's global shortcuts; absent where there are none.
    std::optional<unsigned> globalShortcuts;
};

/// One line of the doctor's screen.
struct DoctorFinding {
    /// What was looked at: "keys".
    std::string subject;
    bool ok = false;
    /// What was found, in a sentence.
    std::string finding;
    /// What to do about it; empty where there is nothing to do.
    std::string next;
};

/// Judges the facts: keys, sound, packs, microphone, permissions, passwords, hot key, tray and
/// portal, in this order.
std::vector<DoctorFinding> examine(const DoctorFacts& facts);

/// Whether Vornic can do what it is for: hear keys and play them.
bool works(const std::vector<DoctorFinding>& findings);

/// The findings as lines of a screen.
std::string asText(const std::vector<DoctorFinding>& findings);

/// The same as a JSON document: {"works": …, "findings": [{"subject", "ok", "finding", "next"}]}.
std::string asJson(const std::vector<DoctorFinding>& findings);

} // namespace vornic
