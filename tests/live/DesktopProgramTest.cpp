// The whole program before a desktop of the test's: its tray and its portal.

#include "Vornic/linux/tray/DBusMenu.h"
#include "tests/live/ProgramFixture.h"
#include "tests/live/QtLoop.h"
#include "tests/live/dbus/FakePortal.h"
#include "tests/live/dbus/FakeTrayWatcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <QDBusPendingCall>
#include <QDBusPendingReply>

namespace vornic {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class DesktopProgramTest : public ProgramFixture {
  protected:
    /// What the doctor says, while the desktop may be asked.
    std::string askDoctor(ChildProcess::Environment environment = {}) {
        const auto output = scratch / "doctor.log";
        std::filesystem::remove(output);
        const auto doctor =
            start({"doctor", "--packs", packs().string()}, output, std::move(environment));
        // The last of its lines.
        EXPECT_TRUE(loop.waitFor(
            [&] { return readBytes(output).find("global shortcuts") != std::string::npos; }));
        doctor->wait();
        return readBytes(output);
    }

    /// Asks the program's menu as the desktop does.
    QDBusMessage askMenu(FakeTrayWatcher& tray, const QString& method,
                         const QVariantList& arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(tray.items.value(0).section('/', 0, 0),
                                                           "/StatusNotifierItem/Menu",
                                                           "com.canonical.dbusmenu", method);
        call.setArguments(arguments);
        const QDBusPendingCall pending = tray.bus.asyncCall(call);
        EXPECT_TRUE(loop.waitFor([&] { return pending.isFinished(); }));
        EXPECT_FALSE(pending.isError()) << pending.error().message().toStdString();
        return pending.reply();
    }

    /// The number of the menu's entry with this text; -1 where there is none.
    int entry(FakeTrayWatcher& tray, const QString& text) {
        const auto menu = qdbus_cast<MenuLayout>(
            askMenu(tray, "GetLayout", {0, -1, QStringList()}).arguments().value(1));
        for (const QDBusVariant& child : menu.children) {
            const auto found = qdbus_cast<MenuLayout>(child.variant());
            if (found.properties.value("label").toString() == text) {
                return found.id;
            }
        }
        return -1;
    }

    QtLoop loop;
    DBusMenu types; // makes the protocol's types known
};

TEST_F(DesktopProgramTest, theTraysMenuSwitchesTheSoundsAndEndsTheProgram) {
    FakeTrayWatcher tray;
    const auto program = startListening({"--hidden"});
    ASSERT_TRUE(loop.waitFor([&] { return tray.items.size() == 1; }));
    const auto choose = [&](const QString& text) {
        askMenu(tray, "Event",
                {entry(tray, text), "clicked", QVariant::fromValue(QDBusVariant(0)), 0U});
    };
    choose("Sounds on");
    EXPECT_EQ(nlohmann::json::parse(run({"status", "--json"}).output)["silence"], "off");
    choose("Quit");
    EXPECT_EQ(program->wait(), 0);
}

TEST_F(DesktopProgramTest, theDoctorLooksWhetherTheTrayHasGotTheIcon) {
    FakeTrayWatcher tray;
    EXPECT_THAT(askDoctor(), HasSubstr("The desktop says that it shows tray icons."));
    const auto program = startListening({"--hidden"});
    ASSERT_TRUE(loop.waitFor([&] { return tray.items.size() == 1; }));
    EXPECT_THAT(askDoctor(), HasSubstr("Vornic's icon is in the desktop's tray."));
    tray.keeps = false;
    tray.drop();
    EXPECT_THAT(askDoctor(), HasSubstr("not  tray"));
}

TEST_F(DesktopProgramTest, theDoctorAsksThePortalForNothing) {
    FakePortal portal;
    const std::string said = askDoctor({{"WAYLAND_DISPLAY", "wayland-of-nobody"},
                                        {"XDG_SESSION_TYPE", "wayland"},
                                        {"DISPLAY", ""}});
    EXPECT_THAT(said, Not(HasSubstr("ok   hot key")));
    EXPECT_THAT(said, HasSubstr("not  hot key"));
    EXPECT_TRUE(portal.registeredAs.isEmpty());
    EXPECT_EQ(portal.asked, 0);
}

TEST_F(DesktopProgramTest, bashCompletesCommandsOptionsAndBoards) {
    const auto complete = [this](const std::string& words) {
        const std::string folder = std::filesystem::path(VORNIC_PROGRAM).parent_path();
        const std::string script =
            "PATH='" + folder +
            "':$PATH; source '" VORNIC_COMPLETIONS "/vornic.bash'; COMP_WORDS=(vornic " + words +
            "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _vornic; "
            "echo \"[${COMPREPLY[*]}]\"";
        const auto output = scratch / "completed.log";
        std::filesystem::remove(output);
        ChildProcess({"bash", "-c", script}, {}, output.string()).wait();
        return readBytes(output);
    };
    EXPECT_EQ(complete("s"), "[slice status stroke]\n");
    EXPECT_EQ(complete("type --r"), "[--room --raw]\n");
    EXPECT_EQ(complete("autostart ''"), "[enable disable]\n");
    EXPECT_THAT(complete("board ''"), HasSubstr("[next previous "));
}

} // namespace
} // namespace vornic
