// The desktop's own matching of the hot key, with a portal of the test's.

#include "Vornic/linux/hotkey/GlobalShortcut.h"

#include "tests/live/QtLoop.h"
#include "tests/live/dbus/FakePortal.h"

#include <gtest/gtest.h>

#include <memory>

namespace vornic {
namespace {

class GlobalShortcutTest : public ::testing::Test {
  protected:
    GlobalShortcutTest() {
        shortcut.onPress = [this] { ++presses; };
        shortcut.onBound = [this](bool bound) { bound ? ++bindings : ++losses; };
    }

    QtLoop loop;
    GlobalShortcut shortcut;
    int presses = 0;
    int bindings = 0;
    int losses = 0;
};

TEST_F(GlobalShortcutTest, asksForAltSuperKAndHearsItsPresses) {
    FakePortal portal;
    shortcut.start();
    ASSERT_TRUE(loop.waitFor([&] { return shortcut.bound(); }));
    EXPECT_EQ(bindings, 1);
    EXPECT_EQ(portal.preferredTrigger, "ALT+LOGO+k");
    EXPECT_EQ(portal.registeredAs, "org.vornic.Vornic");
    portal.press("toggle-sounds");
    portal.press("toggle-sounds");
    EXPECT_TRUE(loop.waitFor([&] { return presses == 2; })) << presses;
}

TEST_F(GlobalShortcutTest, otherCombinationsAndSessionsAreNotItsOwn) {
    FakePortal portal;
    shortcut.start();
    ASSERT_TRUE(loop.waitFor([&] { return shortcut.bound(); }));
    portal.press("something-else");
    portal.press("toggle-sounds", "/org/freedesktop/portal/desktop/session/another");
    // What was sent first arrives first.
    portal.press("toggle-sounds");
    ASSERT_TRUE(loop.waitFor([&] { return presses > 0; }));
    EXPECT_EQ(presses, 1);
}

TEST_F(GlobalShortcutTest, whatTheUserRefusesIsNotBound) {
    FakePortal portal;
    portal.answer = 1;
    shortcut.start();
    ASSERT_TRUE(loop.waitFor([&] { return losses == 1; }));
    EXPECT_FALSE(shortcut.bound());
    EXPECT_EQ(portal.asked, 1);
}

TEST_F(GlobalShortcutTest, whatTheAnswerLeavesOutIsNotBound) {
    FakePortal portal;
    portal.grants = false;
    shortcut.start();
    ASSERT_TRUE(loop.waitFor([&] { return losses == 1; }));
    EXPECT_FALSE(shortcut.bound());
}

TEST_F(GlobalShortcutTest, asksAgainWhenThePortalHasGoneAndIsBack) {
    auto portal = std::make_unique<FakePortal>();
    shortcut.start();
    ASSERT_TRUE(loop.waitFor([&] { return shortcut.bound(); }));
    portal.reset();
    ASSERT_TRUE(loop.waitFor([&] { return !shortcut.bound(); }));
    EXPECT_EQ(losses, 1);
    FakePortal again;
    EXPECT_TRUE(loop.waitFor([&] { return shortcut.bound(); }));
    again.press("toggle-sounds");
    EXPECT_TRUE(loop.waitFor([&] { return presses == 1; }));
}

TEST_F(GlobalShortcutTest, theEndOfItsSessionUnbindsIt) {
    FakePortal portal;
    shortcut.start();
    ASSERT_TRUE(loop.waitFor([&] { return shortcut.bound(); }));
    portal.closeSession();
    EXPECT_TRUE(loop.waitFor([&] { return !shortcut.bound(); }));
    EXPECT_EQ(losses, 1);
}

} // namespace
} // namespace vornic
