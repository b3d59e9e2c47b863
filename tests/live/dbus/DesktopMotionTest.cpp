// Whether things may move, as a portal of the test's tells it.

#include "Vornic/linux/desktop/DesktopMotion.h"

#include "tests/live/QtLoop.h"

#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <memory>
#include <optional>

namespace vornic {
namespace {

/// The settings of a desktop, on a connection of its own.
class FakeSettings final : public QDBusVirtualObject {
  public:
    FakeSettings() : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "settings")) {
        bus_.registerVirtualObject("/org/freedesktop/portal/desktop", this);
        EXPECT_TRUE(bus_.registerService("org.freedesktop.portal.Desktop"));
    }
    ~FakeSettings() override { QDBusConnection::disconnectFromBus("settings"); }

    QString group = "org.gnome.desktop.interface";
    QString key = "enable-animations";
    QVariant value;

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override {
        if (call.member() != "Read") {
            return false;
        }
        const bool known = call.arguments().value(0) == group && call.arguments().value(1) == key;
        // Wrapped twice, as this method has always done.
        const QDBusVariant inner(value);
        connection.send(
            known ? call.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner))))
                  : call.createErrorReply(QDBusError::UnknownProperty, "unknown"));
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

  private:
    QDBusConnection bus_;
};

class DesktopMotionTest : public ::testing::Test {
  protected:
    DesktopMotionTest() {
        motion.onReduced = [this](bool now) { reduced = now; };
    }

    QtLoop loop;
    DesktopMotion motion;
    std::optional<bool> reduced;
};

TEST_F(DesktopMotionTest, tellsWhatTheDesktopSaysAtTheStart) {
    FakeSettings settings;
    settings.value = false;
    motion.start();
    ASSERT_TRUE(loop.waitFor([&] { return reduced.has_value(); }));
    EXPECT_TRUE(*reduced);
}

TEST_F(DesktopMotionTest, knowsTheOtherDesktopsWord) {
    FakeSettings settings;
    settings.group = "org.kde.kdeglobals.KDE";
    settings.key = "AnimationDurationFactor";
    settings.value = QString("0");
    motion.start();
    ASSERT_TRUE(loop.waitFor([&] { return reduced.has_value(); }));
    EXPECT_TRUE(*reduced);
}

} // namespace
} // namespace vornic
