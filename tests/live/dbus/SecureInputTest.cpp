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

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

namespace vornic {
namespace {

class SecureInputTest : public ::testing::Test {
  protected:
    std::unique_ptr<ChildProcess> openDialog(ChildProcess::Environment environment = {
                                                 {"QT_QPA_PLATFORM", "xcb"},
                                                 {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}}) const {
        return std::make_unique<ChildProcess>(std::vector<std::string>{VORNIC_PASSWORD_DIALOG},
                                              std::move(environment), scratch / "dialog.log");
    }

    /// Kills the bus with the one who starts it; false where there was none.
    static bool killAccessibilityBus() {
        QDBusConnectionInterface* const bus = QDBusConnection::sessionBus().interface();
        const QDBusReply<uint> launcher = bus->servicePid("org.a11y.Bus");
        if (!launcher.isValid()) {
            return false;
        }
        const std::string children = "/proc/" + std::to_string(launcher.value()) + "/task/" +
                                     std::to_string(launcher.value()) + "/children";
        std::ifstream list(children);
        for (pid_t child = 0; list >> child;) {
            ::kill(child, SIGKILL);
        }
        return ::kill(static_cast<pid_t>(launcher.value()), SIGKILL) == 0;
    }

    /// Whether programs are told of a bus that answers; asking starts one.
    static bool hasAccessibilityBus() {
        const QDBusReply<QString> address =
            QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
                "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"));
        const bool answers =
            address.isValid() && QDBusConnection::connectToBus(address.value(), "vornic.probe")
                                     .interface()
                                     ->startService("org.a11y.atspi.Registry")
                                     .isValid();
        QDBusConnection::disconnectFromBus("vornic.probe");
        return answers;
    }

    static QDBusMessage statusCall(const QString& method) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", method);
        call << "org.a11y.Status" << "IsEnabled";
        return call;
    }
    static bool accessibilityEnabled() {
        const QDBusReply<QDBusVariant> reply =
            QDBusConnection::sessionBus().call(statusCall("Get"));
        return reply.value().variant().toBool();
    }
    static void setAccessibility(bool on) {
        QDBusMessage call = statusCall("Set");
        call << QVariant::fromValue(QDBusVariant(on));
        QDBusConnection::sessionBus().call(call);
    }

    bool becomes(bool active) const {
        return loop.waitFor([&] { return secure.active() == active; });
    }

    /// Types Tab until a password is typed. The dialog has no key when it begins, and then has it
    /// in the field for the name.
    bool tabIntoPassword() { return tabIntoPassword(secure); }
    bool tabIntoPassword(const LinuxSecureInput& told) {
        return loop.waitFor([&] {
            if (!told.active()) {
                typer.type(KEY_TAB);
                typer.settle();
            }
            return loop.waitFor([&] { return told.active(); }, std::chrono::milliseconds(300));
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

TEST_F(SecureInputTest, aPasswordFieldThatHadTheFocusBeforeIsFound) {
    secure.start();
    const auto dialog = openDialog();
    ASSERT_TRUE(tabIntoPassword());
    LinuxSecureInput later{QDBusConnection::sessionBus(), QDBusConnection::sessionBus()};
    later.start();
    EXPECT_TRUE(loop.waitFor([&] { return later.active(); }));
    typer.type(KEY_TAB);
    EXPECT_TRUE(loop.waitFor([&] { return !later.active(); }));
}

TEST_F(SecureInputTest, anotherFieldThatHadTheFocusBeforeIsNoPassword) {
    secure.start();
    const auto dialog = openDialog();
    ASSERT_TRUE(tabIntoPassword());
    typer.type(KEY_TAB);
    ASSERT_TRUE(becomes(false));
    LinuxSecureInput later{QDBusConnection::sessionBus(), QDBusConnection::sessionBus()};
    later.start();
    typer.type(KEY_TAB);
    EXPECT_TRUE(loop.waitFor([&] { return later.active(); }));
}

TEST_F(SecureInputTest, findsPasswordFieldsAgainAfterTheAccessibilityBusHasStartedAnew) {
    secure.start();
    auto dialog = openDialog();
    ASSERT_TRUE(tabIntoPassword());
    ASSERT_TRUE(killAccessibilityBus());
    dialog->end(SIGKILL);
    EXPECT_TRUE(becomes(false));
    // Programs that start once there is a new one talk to it.
    ASSERT_TRUE(loop.waitFor([] { return hasAccessibilityBus(); }));
    dialog = openDialog();
    EXPECT_TRUE(tabIntoPassword());
}

TEST_F(SecureInputTest, everyProgramIsAskedToTellWhileItIsWantedAndNoLonger) {
    {
        LinuxSecureInput wishing{QDBusConnection::sessionBus(), QDBusConnection::sessionBus()};
        wishing.start();
        ASSERT_TRUE(loop.waitFor([&] { return wishing.told() == PasswordFields::someTell; }));
        wishing.noticeEverywhere(true);
        EXPECT_TRUE(loop.waitFor([&] { return accessibilityEnabled(); }));
        EXPECT_EQ(wishing.told(), PasswordFields::allThatCanTell);
        // A program that nobody made tell does so now.
        const auto dialog = openDialog({{"QT_QPA_PLATFORM", "xcb"}});
        EXPECT_TRUE(tabIntoPassword(wishing));
        wishing.noticeEverywhere(false);
        EXPECT_TRUE(loop.waitFor([&] { return !accessibilityEnabled(); }));
        wishing.noticeEverywhere(true);
        EXPECT_TRUE(loop.waitFor([&] { return accessibilityEnabled(); }));
    }
    EXPECT_FALSE(accessibilityEnabled()) << "the end of the program takes it back";
}

TEST_F(SecureInputTest, whatSomebodyElseTurnedOnStaysOn) {
    setAccessibility(true);
    {
        LinuxSecureInput wishing{QDBusConnection::sessionBus(), QDBusConnection::sessionBus()};
        wishing.start();
        wishing.noticeEverywhere(true);
        ASSERT_TRUE(loop.waitFor([&] { return wishing.told() == PasswordFields::allThatCanTell; }));
        wishing.noticeEverywhere(false);
    }
    EXPECT_TRUE(accessibilityEnabled());
    setAccessibility(false);
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

TEST_F(SecureInputTest, aLoginManagerThatDiesLockedLocksNothingAndItsSuccessorIsAsked) {
    // A bus of its own, as the system's is: what happens there is not told on the session's.
    const std::string address = "unix:path=" + (scratch / "system").string();
    const ChildProcess daemon({"dbus-daemon", "--session", "--nofork", "--address=" + address}, {},
                              scratch / "system.log");
    ASSERT_TRUE(loop.waitFor([&] { return std::filesystem::exists(scratch / "system"); }));
    const QString bus = QString::fromStdString(address);
    {
        LinuxSecureInput guarded{QDBusConnection::sessionBus(),
                                 QDBusConnection::connectToBus(bus, "system of the test")};
        auto login = std::make_unique<FakeScreenSaver>("org.freedesktop.login1", bus);
        guarded.start();
        ASSERT_TRUE(loop.waitFor([&] { return login->asked >= 2; }));
        login->tellHint(true);
        ASSERT_TRUE(loop.waitFor([&] { return guarded.active(); }));
        login.reset();
        EXPECT_TRUE(loop.waitFor([&] { return !guarded.active(); }));
        login = std::make_unique<FakeScreenSaver>("org.freedesktop.login1", bus, true);
        EXPECT_TRUE(loop.waitFor([&] { return guarded.active(); }));
    }
    QDBusConnection::disconnectFromBus("system of the test");
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
