#include "Vornic/linux/desktop/DesktopServices.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>

namespace vornic {

namespace {

constexpr int answerMillis = 1000;

/// Not valid where nobody answers.
QVariant property(const QDBusConnection& bus, const QString& service, const QString& path,
                  const QString& interface, const QString& name) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Properties", "Get");
    call << interface << name;
    const QDBusMessage reply = bus.call(call, QDBus::Block, answerMillis);
    return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
               ? reply.arguments().front().value<QDBusVariant>().variant()
               : QVariant();
}

} // namespace

DesktopServices DesktopServices::look(const QDBusConnection& session) {
    DesktopServices services;
    services.sessionBus = session.isConnected();
    if (!services.sessionBus) {
        return services;
    }
    const QString watcher = "org.kde.StatusNotifierWatcher";
    services.tray = property(session, watcher, "/StatusNotifierWatcher", watcher,
                             "IsStatusNotifierHostRegistered")
                        .toBool();
    const QDBusMessage address =
        session.call(QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus",
                                                    "GetAddress"),
                     QDBus::Block, answerMillis);
    services.accessibility = address.type() == QDBusMessage::ReplyMessage &&
                             !address.arguments().value(0).toString().isEmpty();
    const QVariant version =
        property(session, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                 "org.freedesktop.portal.GlobalShortcuts", "version");
    if (version.isValid()) {
        services.globalShortcuts = version.toUInt();
    }
    return services;
}

} // namespace vornic
