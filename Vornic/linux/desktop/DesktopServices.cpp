#include "Vornic/linux/desktop/DesktopServices.h"

#include "Vornic/linux/tray/StatusNotifierTray.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QDBusVariant>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

namespace vornic {

/// Whom the authority knows: a session, a process or a name on the bus.
struct PolkitSubject {
    QString kind;
    QVariantMap details;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const PolkitSubject& subject) {
    argument.beginStructure();
    argument << subject.kind << subject.details;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, PolkitSubject& subject) {
    argument.beginStructure();
    argument >> subject.kind >> subject.details;
    argument.endStructure();
    return argument;
}

namespace {

constexpr int answerMillis = 1000;

/// Not valid where nobody answers.
QVariant property(const QDBusConnection& bus, const QString& service, const QString& path,
                  const QString& interface, const QString& name) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, "org.freedesktop.DBus.Properties", "Get");
    call << interface << name;
    call.setAutoStartService(false);
    const QDBusMessage reply = bus.call(call, QDBus::Block, answerMillis);
    return reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
               ? reply.arguments().front().value<QDBusVariant>().variant()
               : QVariant();
}

/// Whether a service runs, or would be started by a message.
bool canBeHad(const QDBusConnectionInterface& names, const QString& service) {
    const QDBusReply<QStringList> known = names.activatableServiceNames();
    return names.isServiceRegistered(service).value() || known.value().contains(service);
}

} // namespace

DesktopServices DesktopServices::look(const QDBusConnection& session) {
    DesktopServices services;
    services.sessionBus = session.isConnected();
    if (!services.sessionBus) {
        return services;
    }
    const QString watcher = "org.kde.StatusNotifierWatcher";
    const QString watcherPath = "/StatusNotifierWatcher";
    services.tray =
        property(session, watcher, watcherPath, watcher, "IsStatusNotifierHostRegistered").toBool();
    const QDBusConnectionInterface& names = *session.interface();
    const QDBusReply<QString> vornic = names.serviceOwner("org.vornic.Vornic");
    if (services.tray && vornic.isValid()) {
        const QStringList items =
            property(session, watcher, watcherPath, watcher, "RegisteredStatusNotifierItems")
                .toStringList();
        services.trayHasVornic = StatusNotifierTray::isAmong(
            items, vornic.value(), names.servicePid(vornic.value()).value());
    }
    services.accessibility = canBeHad(names, "org.a11y.Bus");
    const QVariant version =
        property(session, "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                 "org.freedesktop.portal.GlobalShortcuts", "version");
    if (version.isValid()) {
        services.globalShortcuts = version.toUInt();
    }
    return services;
}

std::optional<bool> hasPasswordAgent(const QDBusConnection& system) {
    const QString id = qEnvironmentVariable("XDG_SESSION_ID");
    if (!system.isConnected() || id.isEmpty()) {
        return std::nullopt;
    }
    qDBusRegisterMetaType<PolkitSubject>();
    const QVariant subject =
        QVariant::fromValue(PolkitSubject{.kind = "unix-session", .details = {{"session-id", id}}});
    const QString agentPath = "/org/vornic/Doctor";
    const auto authority = [&](const QString& method, const QVariantList& arguments) {
        QDBusMessage call = QDBusMessage::createMethodCall(
            "org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
            "org.freedesktop.PolicyKit1.Authority", method);
        call.setArguments(arguments);
        return system.call(call, QDBus::Block, answerMillis);
    };
    const QDBusMessage reply =
        authority("RegisterAuthenticationAgent", {subject, QString("C"), agentPath});
    if (reply.type() == QDBusMessage::ReplyMessage) {
        authority("UnregisterAuthenticationAgent", {subject, agentPath});
        return false;
    }
    return reply.errorMessage().contains("already exists") ? std::optional(true) : std::nullopt;
}

} // namespace vornic

Q_DECLARE_METATYPE(vornic::PolkitSubject)
