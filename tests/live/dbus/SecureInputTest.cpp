// Passwords typed into a real dialog on the test's X server, told by the accessibility bus; and the
// screen's lock, told by a screen saver and a login manager of the test's.

#include "Vornic/linux/quiet/LinuxSecureInput.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/QtLoop.h"
#include "tests/live/dbus/FakeScreenSaver.h"
#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <csignal>
#include <memory>

namespace vornic {
namespace {

class SecureInputTest : public ::testing::Test {
  protected:
    std::unique_ptr<ChildProcess> openDialog() const {
        return std::make_unique<ChildProcess>(
            std::vector<std::string>{VORNIC_PASSWORD_DIALOG},
            ChildProcess::Environment{{"QT_QPA_PLATFORM", "xcb"},
                                      {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}},
            scratch / "dialog.log");
    }

    bool becomes(bool active) const {
        return loop.waitFor([&] { return secure.active() == active; });
    }

    /// Types Tab until a password is typed. The dialog has no key when it begins, and then has it
    /// in the field for the name.
    bool tabIntoPassword() {
        return loop.waitFor([&] {
            if (!secure.active()) {
                typer.type(KEY_TAB);
                typer.settle();
            }
            return loop.waitFor([&] { return secure.active(); }, std::chrono::milliseconds(300));
        });
    }

    QtLoop loop;
    LinuxSecureInput secure{QDBusConnection::sessionBus(), QDBusConnection::sessionBus()};
    KeyTyper typer;
    ScratchFolder scratch;
};

TEST_F(SecureInputTest, aPasswordFieldOfARealDialogIsSecureWhileItHasTheFocus) {
    int changes = 0;
    secure.onChange = [&changes] { ++changes; };
    secure.start();
    const auto dialog = openDialog();
    ASSERT_TRUE(tabIntoPassword());
    EXPECT_EQ(changes, 1);
    typer.type(KEY_TAB);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(changes, 2);
    typer.type(KEY_TAB);
    EXPECT_TRUE(becomes(true));
}

TEST_F(SecureInputTest, endsWithAProgramThatIsKilled) {
    secure.start();
    const auto dialog = openDialog();
    ASSERT_TRUE(tabIntoPassword());
    dialog->end(SIGKILL);
    EXPECT_TRUE(becomes(false));
}

TEST_F(SecureInputTest, endsWithAProgramThatHangs) {
    secure.start();
    const auto dialog = openDialog();
    ASSERT_TRUE(tabIntoPassword());
    dialog->send(SIGSTOP);
    EXPECT_TRUE(becomes(false));
}

TEST_F(SecureInputTest, aLockedScreenIsSecure) {
    FakeScreenSaver saver("org.freedesktop.ScreenSaver");
    secure.start();
    ASSERT_TRUE(loop.waitFor([&] { return saver.asked > 0; }));
    EXPECT_FALSE(secure.active());
    saver.tell(true);
    EXPECT_TRUE(becomes(true));
    saver.tell(false);
    EXPECT_TRUE(becomes(false));
}

TEST_F(SecureInputTest, aScreenLockedBeforeIsSecureFromTheStart) {
    FakeScreenSaver saver("org.gnome.ScreenSaver");
    saver.active = true;
    secure.start();
    EXPECT_TRUE(becomes(true));
}

TEST_F(SecureInputTest, aScreenSaverThatDiesLocksNothing) {
    auto saver = std::make_unique<FakeScreenSaver>("org.freedesktop.ScreenSaver");
    secure.start();
    saver->tell(true);
    ASSERT_TRUE(becomes(true));
    saver.reset();
    EXPECT_TRUE(becomes(false));
}

TEST_F(SecureInputTest, theLoginManagersWordCounts) {
    FakeScreenSaver login("org.freedesktop.login1");
    secure.start();
    // Once for the session, once for its hint.
    ASSERT_TRUE(loop.waitFor([&] { return login.asked >= 2; }));
    login.tellHint(true);
    EXPECT_TRUE(becomes(true));
    login.tellHint(false);
    EXPECT_TRUE(becomes(false));
}

TEST_F(SecureInputTest, eitherOfTwoIsEnough) {
    FakeScreenSaver saver("org.freedesktop.ScreenSaver");
    FakeScreenSaver login("org.freedesktop.login1");
    login.active = true;
    secure.start();
    ASSERT_TRUE(becomes(true));
    saver.tell(true);
    login.tellHint(false);
    saver.tell(true);
    int changes = 0;
    secure.onChange = [&changes] { ++changes; };
    saver.tell(false);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace vornic
