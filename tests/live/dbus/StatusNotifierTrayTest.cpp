// The icon and its menu, before a tray of the test's on a real bus.

#include "Vornic/linux/tray/StatusNotifierTray.h"

#include "tests/live/QtLoop.h"
#include "tests/live/dbus/FakeTrayWatcher.h"

#include <gtest/gtest.h>

#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <memory>
#include <string>
#include <vector>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class StatusNotifierTrayTest : public ::testing::Test {
  protected:
    void start() { tray = std::make_unique<StatusNotifierTray>(50ms); }

    bool becomesVisible() const {
        return loop.waitFor([&] { return tray->visible(); });
    }

    /// Asks the icon as the desktop does; both live in this process, so its loop runs meanwhile.
    QDBusMessage ask(const QString& path, const QString& interface, const QString& method,
                     const QVariantList& arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QDBusConnection::sessionBus().baseService(), path, interface, method);
        call.setArguments(arguments);
        const QDBusPendingCall pending = watcher->bus.asyncCall(call);
        EXPECT_TRUE(loop.waitFor([&] { return pending.isFinished(); })) << method.toStdString();
        EXPECT_FALSE(pending.isError()) << pending.error().message().toStdString();
        return pending.reply();
    }
    QString menuPath() {
        const QDBusMessage reply = ask("/StatusNotifierItem", "org.freedesktop.DBus.Properties",
                                       "Get", {"org.kde.StatusNotifierItem", "Menu"});
        return reply.arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant()
            .value<QDBusObjectPath>()
            .path();
    }
    QDBusMessage askMenu(const QString& method, const QVariantList& arguments) {
        return ask(menuPath(), "com.canonical.dbusmenu", method, arguments);
    }
    MenuLayout layout(int depth = -1) {
        return qdbus_cast<MenuLayout>(
            askMenu("GetLayout", {0, depth, QStringList()}).arguments().value(1));
    }
    static MenuLayout child(const MenuLayout& of, int at) {
        return qdbus_cast<MenuLayout>(of.children.at(at).variant());
    }
    void click(int id) {
        askMenu("Event", {id, "clicked", QVariant::fromValue(QDBusVariant(0)), 0U});
    }

    QtLoop loop;
    std::unique_ptr<FakeTrayWatcher> watcher = std::make_unique<FakeTrayWatcher>();
    std::unique_ptr<StatusNotifierTray> tray;
};

TEST_F(StatusNotifierTrayTest, countsAsVisibleOnceTheTrayHasKeptIt) {
    start();
    EXPECT_TRUE(tray->undecided());
    EXPECT_FALSE(tray->visible());
    ASSERT_TRUE(becomesVisible());
    EXPECT_FALSE(tray->undecided());
    EXPECT_EQ(watcher->items.size(), 1);
}

TEST_F(StatusNotifierTrayTest, aTrayThatTakesItAndDropsItShowsNothing) {
    watcher->keeps = false;
    start();
    ASSERT_TRUE(loop.waitFor([&] { return !tray->undecided(); }));
    EXPECT_EQ(watcher->registered, 1);
    EXPECT_FALSE(tray->visible());
}

TEST_F(StatusNotifierTrayTest, aListThatNobodyShowsIsNoTrayUntilSomebodyDoes) {
    watcher->shows = false;
    start();
    ASSERT_TRUE(loop.waitFor([&] { return !tray->undecided(); }));
    EXPECT_FALSE(tray->visible());
    watcher->show(true);
    EXPECT_TRUE(becomesVisible());
    watcher->show(false);
    EXPECT_TRUE(loop.waitFor([&] { return !tray->visible(); }));
}

TEST_F(StatusNotifierTrayTest, droppedLaterItIsNotVisibleUntilItIsTakenAgain) {
    start();
    ASSERT_TRUE(becomesVisible());
    int changes = 0;
    tray->onVisibleChange = [&changes] { ++changes; };
    watcher->drop();
    ASSERT_TRUE(loop.waitFor([&] { return changes == 1; }));
    EXPECT_FALSE(tray->visible());
    EXPECT_TRUE(becomesVisible()) << "it registers once more";
}

TEST_F(StatusNotifierTrayTest, withoutATrayItIsDecidedAtOnceAndATrayThatComesLaterHasIt) {
    watcher.reset();
    start();
    ASSERT_TRUE(loop.waitFor([&] { return !tray->undecided(); }));
    EXPECT_FALSE(tray->visible());
    watcher = std::make_unique<FakeTrayWatcher>();
    EXPECT_TRUE(becomesVisible());
    watcher.reset();
    EXPECT_TRUE(loop.waitFor([&] { return !tray->visible(); }));
}

TEST_F(StatusNotifierTrayTest, theMenuIsToldWithItsMarksAndItsSubmenus) {
    start();
    tray->setMenu({{.text = "Sounds on", .mark = TrayMenuEntry::Mark::ticked, .marked = true},
                   {},
                   {.text = "My_board",
                    .children = {{.text = "Deep", .mark = TrayMenuEntry::Mark::chosenOfSeveral},
                                 {.text = "Soft"}}}});
    const MenuLayout menu = layout();
    ASSERT_EQ(menu.children.size(), 3);
    EXPECT_EQ(child(menu, 0).properties.value("label").toString(), "Sounds on");
    EXPECT_EQ(child(menu, 0).properties.value("toggle-type").toString(), "checkmark");
    EXPECT_EQ(child(menu, 0).properties.value("toggle-state").toInt(), 1);
    EXPECT_EQ(child(menu, 1).properties.value("type").toString(), "separator");
    const MenuLayout boards = child(menu, 2);
    EXPECT_EQ(boards.properties.value("label").toString(), "My__board");
    EXPECT_EQ(boards.properties.value("children-display").toString(), "submenu");
    ASSERT_EQ(boards.children.size(), 2);
    EXPECT_EQ(child(boards, 0).properties.value("toggle-type").toString(), "radio");
    EXPECT_EQ(child(boards, 0).properties.value("toggle-state").toInt(), 0);
    // A desktop may ask for one level at a time.
    EXPECT_TRUE(child(layout(1), 2).children.isEmpty());
}

TEST_F(StatusNotifierTrayTest, whatIsChosenIsDone) {
    start();
    std::string chosen;
    tray->setMenu({{.text = "One", .choose = [&chosen] { chosen += "one"; }},
                   {.text = "More", .children = {{.text = "Two", .choose = [&] {
                                                      chosen += "two";
                                                      tray->setMenu({});
                                                  }}}}});
    const MenuLayout menu = layout();
    click(child(menu, 0).id);
    EXPECT_EQ(chosen, "one");
    click(child(child(menu, 1), 0).id);
    EXPECT_EQ(chosen, "onetwo");
    EXPECT_TRUE(layout().children.isEmpty());
    // An entry that is gone by now does nothing.
    click(7);
    click(-1);
    EXPECT_EQ(chosen, "onetwo");
}

TEST_F(StatusNotifierTrayTest, aDesktopFindsItsOwnIconInEveryWayOfListing) {
    for (const char* const item : {":1.5/StatusNotifierItem", ":1.5", ":1.5@/StatusNotifierItem",
                                   "org.kde.StatusNotifierItem-42-1",
                                   "org.kde.StatusNotifierItem-42-1/StatusNotifierItem"}) {
        EXPECT_TRUE(StatusNotifierTray::isAmong({"other", item}, ":1.5", 42)) << item;
    }
    EXPECT_FALSE(StatusNotifierTray::isAmong(
        {":1.55/StatusNotifierItem", "org.kde.StatusNotifierItem-421-1"}, ":1.5", 42));
}

TEST_F(StatusNotifierTrayTest, theWheelIsToldInNotches) {
    start();
    ASSERT_TRUE(becomesVisible());
    double notches = 0;
    tray->onScroll = [&](double by) { notches += by; };
    const auto scroll = [&](int delta, const QString& orientation) {
        notches = 0;
        ask("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Scroll", {delta, orientation});
        return notches;
    };
    EXPECT_EQ(scroll(120, "vertical"), 1.0);
    EXPECT_EQ(scroll(-240, "Vertical"), -2.0);
    EXPECT_EQ(scroll(-1, "vertical"), -1.0) << "trays that count notches";
    EXPECT_EQ(scroll(120, "horizontal"), 0.0);
}

} // namespace
} // namespace vornic
