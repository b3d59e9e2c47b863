#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantMap>
#include <stdexcept>

namespace vornic {

/// A desktop's screen saver and the login manager, both on the session's bus: what they say about
/// the lock is all that they do.
class FakeScreenSaver final : public QDBusVirtualObject {
  public:
    /// On the bus with this address, or the session's where that is empty.
    explicit FakeScreenSaver(const QString& service, const QString& address = {},
                             bool locked = false)
        : active(locked), service_(service),
          bus_(address.isEmpty()
                   ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, "fake-" + service)
                   : QDBusConnection::connectToBus(address, "fake-" + service)) {
        bus_.registerVirtualObject("/", this, QDBusConnection::SubPath);
        if (!bus_.registerService(service)) {
            throw std::runtime_error("the screen saver's name is taken");
        }
    }
    ~FakeScreenSaver() override { QDBusConnection::disconnectFromBus("fake-" + service_); }

    /// What it answers when asked.
    bool active;
    /// How often it was asked.
    int asked = 0;

    /// Locks or unlocks, and says so as a screen saver does.
    void tell(bool locked) {
        active = locked;
        QDBusMessage signal = QDBusMessage::createSignal("/ScreenSaver", service_, "ActiveChanged");
        signal << locked;
        bus_.send(signal);
    }

    /// The same as the login manager says it.
    void tellHint(bool locked) {
        active = locked;
        QDBusMessage signal = QDBusMessage::createSignal(
            sessionPath, "org.freedesktop.DBus.Properties", "PropertiesChanged");
        signal << QString("org.freedesktop.login1.Session") << QVariantMap{{"LockedHint", locked}}
               << QStringList();
        bus_.send(signal);
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        ++asked;
        if (message.member() == "GetActive") {
            return connection.send(message.createReply(active));
        }
        if (message.member() == "GetSession") {
            return connection.send(
                message.createReply(QVariant::fromValue(QDBusObjectPath(sessionPath))));
        }
        if (message.member() == "Get") {
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(active))));
        }
        return false;
    }
    QString introspect(const QString&) const override { return {}; }

  private:
    const QString sessionPath = "/org/freedesktop/login1/session/_31";
    QString service_;
    QDBusConnection bus_;
};

} // namespace vornic
