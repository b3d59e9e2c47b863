#include "Vornic/commands/DoctorReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace vornic {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// A computer where everything works.
DoctorFacts healthy() {
    DoctorFacts facts;
    facts.keySource = KeySourceKind::x11;
    facts.tapState = TapState::listening;
    facts.tap = "X11 raw keys of :0";
    facts.hotKeyRegistered = true;
    facts.soundDevice = "Speakers";
    facts.packs = 7;
    facts.packFolder = "/packs";
    facts.microphone = true;
    facts.sessionBus = true;
    facts.tray = true;
    facts.accessibility = true;
    facts.globalShortcuts = 1;
    return facts;
}

DoctorFinding found(const DoctorFacts& facts, const std::string& subject) {
    const auto findings = examine(facts);
    const auto finding = std::ranges::find(findings, subject, &DoctorFinding::subject);
    return finding == findings.end() ? DoctorFinding{} : *finding;
}

TEST(DoctorReport, aHealthyComputerIsAllRight) {
    const auto findings = examine(healthy());
    EXPECT_EQ(findings.size(), 9U);
    EXPECT_TRUE(works(findings));
    for (const DoctorFinding& finding : findings) {
        EXPECT_TRUE(finding.ok) << finding.subject;
        EXPECT_THAT(finding.finding, Not(IsEmpty()));
        EXPECT_THAT(finding.next, IsEmpty()) << finding.subject;
    }
}

TEST(DoctorReport, everythingThatDoesNotWorkHasANextStep) {
    DoctorFacts facts;
    facts.keyProblem = "Start Vornic inside a graphical session.";
    facts.soundProblem = "Start PipeWire.";
    const auto findings = examine(facts);
    EXPECT_FALSE(works(findings));
    int wrong = 0;
    for (const DoctorFinding& finding : findings) {
        if (!finding.ok) {
            ++wrong;
            EXPECT_THAT(finding.next, Not(IsEmpty())) << finding.subject;
        }
    }
    EXPECT_EQ(wrong, 7);
}

TEST(DoctorReport, keysSoundAndPacksAreNeededAndTheRestIsNot) {
    DoctorFacts facts = healthy();
    facts.tray = facts.accessibility = facts.hotKeyRegistered = facts.microphone = false;
    facts.globalShortcuts.reset();
    EXPECT_TRUE(works(examine(facts)));
    facts.packs = 0;
    EXPECT_FALSE(works(examine(facts)));
    facts = healthy();
    facts.soundProblem = "No sound.";
    EXPECT_FALSE(works(examine(facts)));
    facts = healthy();
    facts.tapState = TapState::needsRelaunch;
    EXPECT_FALSE(works(examine(facts)));
}

TEST(DoctorReport, eachStateOfTheTapHasItsOwnNextStep) {
    DoctorFacts facts = healthy();
    facts.keySource = KeySourceKind::evdev;
    facts.tap = "2 of 2 keyboards";
    EXPECT_THAT(found(facts, "keys").finding, HasSubstr("2 of 2 keyboards"));
    facts.tapState = TapState::needsPermission;
    EXPECT_THAT(found(facts, "keys").next, HasSubstr("Turn on Input Monitoring…"));
    facts.tapState = TapState::needsRelaunch;
    EXPECT_THAT(found(facts, "keys").finding, HasSubstr("Permission granted"));
    EXPECT_THAT(found(facts, "keys").next, HasSubstr("Start Vornic again"));
    facts.keySource = KeySourceKind::x11;
    EXPECT_THAT(found(facts, "keys").next, HasSubstr("DISPLAY"));
}

TEST(DoctorReport, permissionsDependOnTheSessionTheRuleAndTheAgreement) {
    DoctorFacts facts = healthy();
    EXPECT_TRUE(found(facts, "permissions").ok);
    facts.keySource = KeySourceKind::evdev;
    EXPECT_THAT(found(facts, "permissions").finding, HasSubstr("another way"));
    facts.tapState = TapState::needsPermission;
    EXPECT_THAT(found(facts, "permissions").next, HasSubstr("Install"));
    facts.ruleInstalled = true;
    EXPECT_THAT(found(facts, "permissions").next, HasSubstr("Turn on Input Monitoring…"));
    facts.agreed = true;
    EXPECT_TRUE(found(facts, "permissions").ok);
    facts.ruleInstalled = false;
    EXPECT_FALSE(found(facts, "permissions").ok);
}

TEST(DoctorReport, aTakenHotKeyIsToldFromOneThatNobodyGrants) {
    DoctorFacts facts = healthy();
    facts.hotKeyRegistered = false;
    EXPECT_THAT(found(facts, "hot key").finding, HasSubstr("taken"));
    facts.keySource = KeySourceKind::none;
    facts.keyProblem = "Start a session.";
    EXPECT_EQ(found(facts, "hot key").next, "Start a session.");
}

TEST(DoctorReport, theHotKeyOfAWaylandSessionNeedsAKeyboardOrTheDesktop) {
    DoctorFacts facts = healthy();
    facts.keySource = KeySourceKind::evdev;
    EXPECT_TRUE(found(facts, "hot key").ok);
    facts.hotKeyRegistered = false;
    facts.tapState = TapState::needsPermission;
    EXPECT_THAT(found(facts, "hot key").finding, HasSubstr("asks the desktop"));
    facts.globalShortcuts.reset();
    EXPECT_FALSE(found(facts, "hot key").ok);
    EXPECT_THAT(found(facts, "hot key").finding, HasSubstr("No keyboard may be read"));
    EXPECT_THAT(found(facts, "hot key").next, HasSubstr("Turn on Input Monitoring…"));
}

TEST(DoctorReport, withoutAKeyboardNoneIsHeard) {
    DoctorFacts facts = healthy();
    facts.keySource = KeySourceKind::evdev;
    facts.hotKeyRegistered = false;
    facts.globalShortcuts.reset();
    EXPECT_THAT(found(facts, "keys").finding, HasSubstr("No keyboard is plugged in"));
    EXPECT_FALSE(found(facts, "hot key").ok);
    EXPECT_EQ(found(facts, "hot key").next, "Plug one in.");
}

TEST(DoctorReport, withoutAPasswordAgentTheCommandIsNamed) {
    DoctorFacts facts = healthy();
    facts.keySource = KeySourceKind::evdev;
    facts.tapState = TapState::needsPermission;
    facts.ruleInstalled = true;
    facts.turnOnCommand = "/usr/lib/helper enable";
    facts.passwordAgent = false;
    for (const char* const subject : {"keys", "permissions"}) {
        EXPECT_THAT(found(facts, subject).next, HasSubstr("sudo /usr/lib/helper enable"));
    }
    facts.passwordAgent = true;
    EXPECT_THAT(found(facts, "permissions").next, HasSubstr("Turn on Input Monitoring…"));
}

TEST(DoctorReport, aTrayThatHasNotGotVornicsIconIsNoTray) {
    DoctorFacts facts = healthy();
    facts.trayHasVornic = true;
    EXPECT_TRUE(found(facts, "tray").ok);
    facts.trayHasVornic = false;
    EXPECT_FALSE(found(facts, "tray").ok);
    EXPECT_THAT(found(facts, "tray").next, HasSubstr("open its panel"));
}

TEST(DoctorReport, theScreenShowsStateSubjectFindingAndNextStep) {
    DoctorFacts facts = healthy();
    facts.tray = false;
    const std::string text = asText(examine(facts));
    EXPECT_THAT(text, HasSubstr("ok   keys         Vornic hears your keys: X11 raw keys of :0.\n"));
    EXPECT_THAT(text, HasSubstr("not  tray         The desktop shows no tray icons.\n"));
    EXPECT_THAT(text, HasSubstr("\n                  Start Vornic once more"));
    EXPECT_LE(std::ranges::count(text, '\n'), 24) << "more than one screen";
}

TEST(DoctorReport, theDocumentSaysTheSame) {
    DoctorFacts facts = healthy();
    facts.tray = false;
    const auto document = nlohmann::json::parse(asJson(examine(facts)));
    EXPECT_EQ(document["works"], true);
    ASSERT_EQ(document["findings"].size(), 9U);
    EXPECT_EQ(document["findings"][0]["subject"], "keys");
    EXPECT_EQ(document["findings"][0]["ok"], true);
    EXPECT_EQ(document["findings"][7]["subject"], "tray");
    EXPECT_EQ(document["findings"][7]["ok"], false);
    EXPECT_NE(document["findings"][7]["next"], "");
}

} // namespace
} // namespace vornic
