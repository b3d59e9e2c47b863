#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <stdexcept>
#include <utility>

namespace vornic {

/// A desktop's tray: the watcher that icons register with, which also shows them, on a connection
/// of its own. What a test wants of an icon, it asks through `bus`.
class FakeTrayWatcher final : public QDBusVirtualObject {
  public:
    FakeTrayWatcher()
        : bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "fake tray")) {
        bus.registerVirtualObject(path(), this, QDBusConnection::SingleNode);
        if (!bus.registerService(service())) {
            throw std::runtime_error("the tray's name is taken");
        }
    }
    ~FakeTrayWatcher() override {
        bus.unregisterService(service());
        QDBusConnection::disconnectFromBus("fake tray");
    }

    static QString service() { return "org.kde.StatusNotifierWatcher"; }
    static QString path() { return "/StatusNotifierWatcher"; }

    /// Whether somebody draws what is listed.
    bool shows = true;
    /// False drops every icon as soon as it has registered.
    bool keeps = true;
    /// How often an icon registered, and the icons listed now, as "name/path".
    int registered = 0;
    QStringList items;

    /// The icon is shown no more, though nothing happened to its program.
    void drop() {
        const QStringList dropped = std::exchange(items, QStringList());
        for (const QString& item : dropped) {
            tell("StatusNotifierItemUnregistered", {item});
        }
    }

    void show(bool on) {
        shows = on;
        tell(on ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered", {});
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == "RegisterStatusNotifierItem") {
            ++registered;
            if (keeps) {
                items.append(message.service() + "/StatusNotifierItem");
            }
            return connection.send(message.createReply());
        }
        const QVariantMap properties{{"IsStatusNotifierHostRegistered", shows},
                                     {"RegisteredStatusNotifierItems", items},
                                     {"ProtocolVersion", 0}};
        if (message.member() == "GetAll") {
            return connection.send(message.createReply(QVariant(properties)));
        }
        if (message.member() == "Get") {
            const QVariant value = properties.value(message.arguments().value(1).toString());
            return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
        }
        return false;
    }
    QString introspect(const QString&) const override { return {}; }

    QDBusConnection bus;

  private:
    void tell(const QString& what, const QVariantList& arguments) {
        QDBusMessage signal = QDBusMessage::createSignal(path(), service(), what);
        signal.setArguments(arguments);
        bus.send(signal);
    }
};

} // namespace vornic
