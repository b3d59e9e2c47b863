#include "tests/live/dbus/FakePortal.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <stdexcept>

namespace vornic {

namespace {

const QString name = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString connectionName = "vornic-fake-portal";

} // namespace

FakePortal::FakePortal()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {
    bus_.registerVirtualObject(path, this, QDBusConnection::SubPath);
    if (!bus_.registerService(name)) {
        throw std::runtime_error("the portal's name is taken: run live tests by ./dev test");
    }
}

FakePortal::~FakePortal() {
    bus_.unregisterService(name);
    bus_.unregisterObject(path);
    QDBusConnection::disconnectFromBus(connectionName);
}

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const QList<QVariant> arguments = message.arguments();
    if (message.member() == "Register") {
        registeredAs = arguments.value(0).toString();
        connection.send(message.createReply());
        return true;
    }
    if (message.member() == "CreateSession") {
        const auto options = qdbus_cast<QVariantMap>(arguments.value(0));
        session_ = path + "/session/" + options.value("session_handle_token").toString();
        respond(message, options, 0, {{"session_handle", session_}});
        return true;
    }
    if (message.member() == "BindShortcuts") {
        ++asked;
        const auto list = arguments.value(1).value<QDBusArgument>();
        QString id;
        QVariantMap properties;
        list.beginArray();
        list.beginStructure();
        list >> id >> properties;
        list.endStructure();
        list.endArray();
        preferredTrigger = properties.value("preferred_trigger").toString();
        respond(message, qdbus_cast<QVariantMap>(arguments.value(3)), answer,
                grants ? QVariantMap{{"shortcuts", arguments.value(1)}} : QVariantMap());
        return true;
    }
    return false;
}

void FakePortal::respond(const QDBusMessage& call, const QVariantMap& options, uint response,
                         const QVariantMap& results) {
    const QString request = path + "/request/" + call.service().mid(1).replace('.', '_') + "/" +
                            options.value("handle_token").toString();
    bus_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    QDBusMessage signal =
        QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
    signal << response << results;
    bus_.send(signal);
}

void FakePortal::press(const QString& id, const QString& otherSession) {
    QDBusMessage signal =
        QDBusMessage::createSignal(path, "org.freedesktop.portal.GlobalShortcuts", "Activated");
    signal << QVariant::fromValue(QDBusObjectPath(otherSession.isEmpty() ? session_ : otherSession))
           << id << QVariant::fromValue(qulonglong{1}) << QVariantMap();
    bus_.send(signal);
}

void FakePortal::closeSession() {
    QDBusMessage signal =
        QDBusMessage::createSignal(session_, "org.freedesktop.portal.Session", "Closed");
    signal << QVariantMap();
    bus_.send(signal);
}

} // namespace vornic
