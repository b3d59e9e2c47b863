#include "tests/live/evdev/FakeLogin.h"

#include <unistd.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QList>
#include <QMap>
#include <QVariantMap>
#include <stdexcept>

namespace vornic {

namespace {

struct FakeSession {
    QString id;
    uint user = 0;
    QString name;
    QString seat;
    QDBusObjectPath path;
};
struct FakeVerdict {
    bool allowed = false;
    bool challenge = false;
    QMap<QString, QString> details;
};
struct FakeSubject {
    QString kind;
    QVariantMap details;
};

QDBusArgument& operator<<(QDBusArgument& to, const FakeSession& session) {
    to.beginStructure();
    to << session.id << session.user << session.name << session.seat << session.path;
    to.endStructure();
    return to;
}
const QDBusArgument& operator>>(const QDBusArgument& from, FakeSession& session) {
    from.beginStructure();
    from >> session.id >> session.user >> session.name >> session.seat >> session.path;
    from.endStructure();
    return from;
}
QDBusArgument& operator<<(QDBusArgument& to, const FakeVerdict& verdict) {
    to.beginStructure();
    to << verdict.allowed << verdict.challenge << verdict.details;
    to.endStructure();
    return to;
}
const QDBusArgument& operator>>(const QDBusArgument& from, FakeVerdict& verdict) {
    from.beginStructure();
    from >> verdict.allowed >> verdict.challenge >> verdict.details;
    from.endStructure();
    return from;
}
const QDBusArgument& operator>>(const QDBusArgument& from, FakeSubject& subject) {
    from.beginStructure();
    from >> subject.kind >> subject.details;
    from.endStructure();
    return from;
}

const QString connectionName = "vornic-fake-login";
const QString loginManager = "org.freedesktop.login1";
const QString polkit = "org.freedesktop.PolicyKit1";
const QString session = "/org/freedesktop/login1/session/_31";

} // namespace

class FakeLogin::Object final : public QDBusVirtualObject {
  public:
    explicit Object(FakeLogin& login) : login_(login) {}
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        if (call.member() == "ListSessions") {
            const QList<FakeSession> all{
                {"1", login_.user, "somebody", "seat0", QDBusObjectPath(session)}};
            return bus.send(call.createReply(QVariant::fromValue(all)));
        }
        if (call.member() == "Get" && call.path() == session) {
            const QString property = call.arguments().at(1).toString();
            const bool answer = property == "Active" ? login_.active : login_.locked;
            return bus.send(call.createReply(QVariant::fromValue(QDBusVariant(answer))));
        }
        if (call.member() == "CheckAuthorization" &&
            call.arguments().at(1) == "org.vornic.Vornic.hear-keys") {
            const auto subject = qdbus_cast<FakeSubject>(call.arguments().at(0));
            login_.askedAbout = subject.details.value("pid").toUInt();
            ++login_.asked;
            if (login_.mute > 0) {
                --login_.mute;
                return true;
            }
            return bus.send(
                call.createReply(QVariant::fromValue(FakeVerdict{login_.allowed, false, {}})));
        }
        return false;
    }

  private:
    FakeLogin& login_;
};

FakeLogin::FakeLogin()
    : user(::getuid()),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {
    qDBusRegisterMetaType<FakeSession>();
    qDBusRegisterMetaType<QList<FakeSession>>();
    qDBusRegisterMetaType<QMap<QString, QString>>();
    qDBusRegisterMetaType<FakeVerdict>();
    start();
    ready_.acquire();
}

FakeLogin::~FakeLogin() {
    quit();
    wait();
    QDBusConnection::disconnectFromBus(connectionName);
}

void FakeLogin::run() {
    Object object(*this);
    bus_.registerVirtualObject("/org/freedesktop", &object, QDBusConnection::SubPath);
    if (!bus_.registerService(loginManager) || !bus_.registerService(polkit)) {
        throw std::runtime_error("the login manager's name is taken");
    }
    ready_.release();
    exec();
    bus_.unregisterObject("/org/freedesktop", QDBusConnection::UnregisterTree);
    bus_.unregisterService(loginManager);
    bus_.unregisterService(polkit);
}

void FakeLogin::leave() {
    bus_.unregisterService(loginManager);
}

void FakeLogin::comeBack() {
    if (!bus_.registerService(loginManager)) {
        throw std::runtime_error("the login manager's name is taken");
    }
}

void FakeLogin::tellSession() {
    QDBusMessage signal =
        QDBusMessage::createSignal(session, "org.freedesktop.DBus.Properties", "PropertiesChanged");
    signal << QString("org.freedesktop.login1.Session") << QVariantMap() << QStringList();
    bus_.send(signal);
}

void FakeLogin::tellPolicy() {
    bus_.send(QDBusMessage::createSignal("/org/freedesktop/PolicyKit1/Authority",
                                         "org.freedesktop.PolicyKit1.Authority", "Changed"));
}

} // namespace vornic
