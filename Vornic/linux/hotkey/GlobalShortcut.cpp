#include "Vornic/linux/hotkey/GlobalShortcut.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QList>
#include <algorithm>
#include <utility>

namespace vornic {

/// One combination as the portal takes and returns it.
struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

namespace {

const QString portal = "org.freedesktop.portal.Desktop";
const QString portalPath = "/org/freedesktop/portal/desktop";
const QString shortcuts = "org.freedesktop.portal.GlobalShortcuts";
const QString shortcutId = "toggle-sounds";

} // namespace

GlobalShortcut::GlobalShortcut(const QDBusConnection& session) : bus_(session) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

void GlobalShortcut::start() {
    auto* const watcher = new QDBusServiceWatcher(portal, bus_,
                                                  QDBusServiceWatcher::WatchForRegistration |
                                                      QDBusServiceWatcher::WatchForUnregistration,
                                                  this);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
                     [this] { closed(); });
    QObject::connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        // The first call starts the portal, which then announces itself too.
        if (session_.isEmpty() && requests_ == 0) {
            introduce();
        }
    });
    bus_.connect(portal, portalPath, shortcuts, "Activated", this, SLOT(activated(QDBusMessage)));
    introduce();
}

void GlobalShortcut::introduce() {
    // Some desktops bind nothing to programs without a name. Older ones do not know the call, which
    // changes nothing.
    QDBusMessage call = QDBusMessage::createMethodCall(
        portal, portalPath, "org.freedesktop.host.portal.Registry", "Register");
    call << QString("org.vornic.Vornic") << QVariantMap();
    auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        createSession();
    });
}

QString GlobalShortcut::expectAnswer(const char* slot) {
    const QString token = "vornic" + QString::number(++requests_);
    // The answer may come before the call returns, so its path is worked out beforehand.
    const QString sender = bus_.baseService().mid(1).replace('.', '_');
    bus_.connect(portal, portalPath + "/request/" + sender + "/" + token,
                 "org.freedesktop.portal.Request", "Response", this, slot);
    return token;
}

void GlobalShortcut::createSession() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(portal, portalPath, shortcuts, "CreateSession");
    const QString token = expectAnswer(SLOT(created(uint, QVariantMap)));
    call << QVariantMap{{"handle_token", token}, {"session_handle_token", token}};
    auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->isError()) {
            requests_ = 0;
        }
    });
}

void GlobalShortcut::created(uint response, const QVariantMap& results) {
    session_ = results.value("session_handle").toString();
    if (response == 0 && !session_.isEmpty()) {
        bus_.connect(portal, session_, "org.freedesktop.portal.Session", "Closed", this,
                     SLOT(closed()));
        bind();
    }
}

void GlobalShortcut::bind() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(portal, portalPath, shortcuts, "BindShortcuts");
    const PortalShortcut wanted{
        .id = shortcutId,
        .properties = {{"description", "Sounds on or off"}, {"preferred_trigger", "ALT+LOGO+k"}}};
    call << QVariant::fromValue(QDBusObjectPath(session_))
         << QVariant::fromValue(QList<PortalShortcut>{wanted}) << QString()
         << QVariantMap{{"handle_token", expectAnswer(SLOT(answered(uint, QVariantMap)))}};
    bus_.asyncCall(call);
}

void GlobalShortcut::answered(uint response, const QVariantMap& results) {
    // Those that were refused are left out of the list.
    const QVariant list = results.value("shortcuts");
    const auto granted = list.canConvert<QDBusArgument>()
                             ? qdbus_cast<QList<PortalShortcut>>(list.value<QDBusArgument>())
                             : QList<PortalShortcut>();
    bound_ = response == 0 &&
             std::ranges::find(granted, shortcutId, &PortalShortcut::id) != granted.end();
    onBound(bound_);
}

void GlobalShortcut::activated(const QDBusMessage& signal) {
    const QList<QVariant> arguments = signal.arguments();
    if (arguments.size() >= 2 && arguments[0].value<QDBusObjectPath>().path() == session_ &&
        arguments[1].toString() == shortcutId) {
        onPress();
    }
}

void GlobalShortcut::closed() {
    session_.clear();
    requests_ = 0;
    if (std::exchange(bound_, false)) {
        onBound(false);
    }
}

} // namespace vornic

Q_DECLARE_METATYPE(vornic::PortalShortcut)
