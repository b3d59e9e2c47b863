#include "Vornic/commands/DoctorReport.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vornic {

namespace {

constexpr const char* keys = "keys";
constexpr const char* sound = "sound";
constexpr const char* packs = "packs";
constexpr const char* turnOn = "Choose \"Turn on Input Monitoring…\" in Vornic.";

DoctorFinding fine(std::string subject, std::string finding) {
    return {.subject = std::move(subject), .ok = true, .finding = std::move(finding), .next = {}};
}

DoctorFinding wrong(std::string subject, std::string finding, std::string next) {
    return {.subject = std::move(subject),
            .ok = false,
            .finding = std::move(finding),
            .next = std::move(next)};
}

/// How Input Monitoring is turned on here.
std::string wayToTurnOn(const DoctorFacts& facts) {
    return facts.passwordAgent.value_or(true)
               ? turnOn
               : "Nothing in this session asks for an administrator's password: install a password "
                 "agent such as mate-polkit, or run \"sudo " +
                     facts.turnOnCommand + "\".";
}

/// The right is there, but nothing to read.
bool withoutKeyboard(const DoctorFacts& facts) {
    return facts.keySource == KeySourceKind::evdev && facts.tapState == TapState::listening &&
           !facts.hotKeyRegistered;
}

DoctorFinding examineKeys(const DoctorFacts& facts) {
    if (facts.keySource == KeySourceKind::none) {
        return wrong(keys, "No keys can be heard.", facts.keyProblem);
    }
    if (withoutKeyboard(facts)) {
        return fine(keys, "No keyboard is plugged in; the next one will be heard.");
    }
    if (facts.tapState == TapState::listening) {
        return fine(keys, "Vornic hears your keys: " + facts.tap + ".");
    }
    if (facts.tapState == TapState::needsPermission) {
        return wrong(keys, "Vornic may not read the keyboards of this computer.",
                     wayToTurnOn(facts));
    }
    if (facts.keySource == KeySourceKind::x11) {
        return wrong(keys, "The X server does not tell Vornic about keys.",
                     "Check that DISPLAY names a running X server with X Input 2.1 or newer.");
    }
    return wrong(keys, "Permission granted, but it does not reach this session yet.",
                 "Start Vornic again; if that does not help, log out and in, at the computer "
                 "itself.");
}

DoctorFinding examinePermissions(const DoctorFacts& facts) {
    constexpr const char* subject = "permissions";
    if (facts.keySource == KeySourceKind::none) {
        return fine(subject, "Without a display there is nothing to permit.");
    }
    if (facts.keySource == KeySourceKind::x11) {
        return fine(subject, "An X11 session needs none.");
    }
    if (facts.agreed && !facts.ruleInstalled) {
        return wrong(subject, "Input Monitoring is on, but its rule is missing.",
                     "Install Vornic's package.");
    }
    if (facts.agreed) {
        return fine(subject, "Input Monitoring is on.");
    }
    if (facts.tapState == TapState::listening) {
        return fine(subject, "This user may read keyboards in another way.");
    }
    return wrong(subject, "Input Monitoring is off.",
                 facts.ruleInstalled
                     ? wayToTurnOn(facts)
                     : "Install Vornic's package: it brings the rule that can be turned on.");
}

DoctorFinding examineMicrophone(const DoctorFacts& facts) {
    constexpr const char* subject = "microphone";
    if (!facts.soundProblem.empty()) {
        return wrong(subject, "Whether a program records cannot be told.", facts.soundProblem);
    }
    return fine(subject, facts.microphone ? "Vornic goes quiet while a program records."
                                          : "There is none, so nothing can record.");
}

DoctorFinding examineHotKey(const DoctorFacts& facts) {
    constexpr const char* subject = "hot key";
    if (facts.hotKeyRegistered) {
        return fine(subject, "Alt+Super+K switches the sounds.");
    }
    if (facts.keySource == KeySourceKind::none) {
        return wrong(subject, "There is nobody to tell about Alt+Super+K.", facts.keyProblem);
    }
    if (facts.keySource == KeySourceKind::evdev && facts.globalShortcuts) {
        return fine(subject, "Vornic asks the desktop for Alt+Super+K when it runs, and you may be "
                             "asked whether it gets it.");
    }
    if (withoutKeyboard(facts)) {
        return wrong(subject, "There is no keyboard on which to notice Alt+Super+K.",
                     "Plug one in.");
    }
    if (facts.keySource == KeySourceKind::evdev) {
        return wrong(subject, "No keyboard may be read, so nobody notices Alt+Super+K.",
                     examineKeys(facts).next);
    }
    return wrong(subject, "Alt+Super+K is taken, by a running Vornic or by another program.",
                 "If Vornic is not running, free it in the other program's settings.");
}

DoctorFinding examineTray(const DoctorFacts& facts) {
    constexpr const char* subject = "tray";
    if (facts.tray && facts.trayHasVornic.value_or(true)) {
        return fine(subject, facts.trayHasVornic ? "Vornic's icon is in the desktop's tray."
                                                 : "The desktop says that it shows tray icons.");
    }
    if (facts.tray) {
        return wrong(subject,
                     "The desktop says that it shows tray icons, but it has not got "
                     "Vornic's.",
                     "Start Vornic once more to open its panel.");
    }
    return wrong(subject, "The desktop shows no tray icons.",
                 facts.sessionBus
                     ? "Start Vornic once more to open its panel; on GNOME, the extension "
                       "AppIndicator shows the icon."
                     : "There is no D-Bus session: start Vornic inside a desktop session.");
}

} // namespace

std::vector<DoctorFinding> examine(const DoctorFacts& facts) {
    return {
        examineKeys(facts),
        facts.soundProblem.empty() ? fine(sound, "Sound goes to " + facts.soundDevice + ".")
                                   : wrong(sound, "There is no sound.", facts.soundProblem),
        facts.packs > 0 ? fine(packs, std::to_string(facts.packs) + " in " + facts.packFolder + ".")
                        : wrong(packs, "No sound packs were found.",
                                "Install Vornic's package, or name their folder with --packs."),
        examineMicrophone(facts),
        examinePermissions(facts),
        facts.accessibility
            ? fine("passwords", "Vornic goes quiet in password fields of programs that tell.")
            : wrong("passwords", "Password fields cannot be noticed.",
                    "Install the package at-spi2-core and log in again."),
        examineHotKey(facts),
        examineTray(facts),
        // Vornic does without: an X server grants the combination, or the key reader matches it.
        fine("portal", facts.globalShortcuts ? "The desktop offers global shortcuts, version " +
                                                   std::to_string(*facts.globalShortcuts) + "."
                                             : "The desktop offers no global shortcuts; Vornic "
                                               "does without."),
    };
}

bool works(const std::vector<DoctorFinding>& findings) {
    return std::ranges::all_of(findings, [](const DoctorFinding& finding) {
        const bool needed =
            finding.subject == keys || finding.subject == sound || finding.subject == packs;
        return finding.ok || !needed;
    });
}

std::string asText(const std::vector<DoctorFinding>& findings) {
    std::size_t width = 0;
    for (const DoctorFinding& finding : findings) {
        width = std::max(width, finding.subject.size());
    }
    std::string text;
    for (const DoctorFinding& finding : findings) {
        const std::string gap(width - finding.subject.size() + 2, ' ');
        text += (finding.ok ? "ok   " : "not  ") + finding.subject + gap + finding.finding + "\n";
        if (!finding.next.empty()) {
            text += std::string(width + 7, ' ') + finding.next + "\n";
        }
    }
    return text;
}

std::string asJson(const std::vector<DoctorFinding>& findings) {
    nlohmann::ordered_json document;
    document["works"] = works(findings);
    document["findings"] = nlohmann::ordered_json::array();
    for (const DoctorFinding& finding : findings) {
        document["findings"].push_back({{"subject", finding.subject},
                                        {"ok", finding.ok},
                                        {"finding", finding.finding},
                                        {"next", finding.next}});
    }
    return document.dump(2) + "\n";
}

} // namespace vornic
