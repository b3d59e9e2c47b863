#include "Vornic/linux/quiet/ScreenLock.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <utility>

namespace vornic {

namespace {

const QString loginService = "org.freedesktop.login1";
const QString loginSession = "org.freedesktop.login1.Session";
const QString properties = "org.freedesktop.DBus.Properties";

struct Saver {
    const char* service;
    const char* path;
};

// Interfaces are named like their services. Each desktop has its own, and some the common one too.
constexpr Saver savers[] = {
    {.service = "org.freedesktop.ScreenSaver", .path = "/org/freedesktop/ScreenSaver"},
    {.service = "org.gnome.ScreenSaver", .path = "/org/gnome/ScreenSaver"},
    {.service = "org.cinnamon.ScreenSaver", .path = "/org/cinnamon/ScreenSaver"},
    {.service = "org.mate.ScreenSaver", .path = "/org/mate/ScreenSaver"},
    {.service = "org.xfce.ScreenSaver", .path = "/org/xfce/ScreenSaver"},
};

} // namespace

ScreenLock::ScreenLock(const QDBusConnection& session, const QDBusConnection& system,
                       std::function<void()> changed)
    : session_(session), system_(system), changed_(std::move(changed)) {}

void ScreenLock::start() {
    session_.connect("org.freedesktop.DBus", {}, "org.freedesktop.DBus", "NameOwnerChanged", this,
                     SLOT(ownerChanged(QString, QString, QString)));
    for (const Saver& saver : savers) {
        // From whatever path: some desktops use a short one.
        session_.connect({}, {}, saver.service, "ActiveChanged", this,
                         SLOT(saverChanged(QDBusMessage)));
        askSaver(saver.service, saver.path);
    }
    auto* const login = new QDBusServiceWatcher(loginService, system_,
                                                QDBusServiceWatcher::WatchForOwnerChange, this);
    QObject::connect(login, &QDBusServiceWatcher::serviceOwnerChanged, this,
                     [this](const QString&, const QString&, const QString& now) {
                         // One that is gone cannot unlock any more, and its successor says anew
                         // how things stand.
                         set(loginService, false);
                         if (!now.isEmpty()) {
                             findSession();
                         }
                     });
    findSession();
}

void ScreenLock::askSaver(const QString& service, const QString& path) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, "GetActive");
    call.setAutoStartService(false);
    auto* const watcher = new QDBusPendingCallWatcher(session_.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<bool> reply = *watcher;
        watcher->deleteLater();
        if (!reply.isError()) {
            set(reply.reply().service(), reply.value());
        }
    });
}

void ScreenLock::saverChanged(const QDBusMessage& signal) {
    if (!signal.arguments().isEmpty()) {
        set(signal.service(), signal.arguments().front().toBool());
    }
}

void ScreenLock::findSession() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        loginService, "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "GetSession");
    // "auto" finds the session of whoever asks, or the one on the screen where a program was
    // started by the user's service manager.
    const QString id = qEnvironmentVariable("XDG_SESSION_ID", "auto");
    call << id;
    call.setAutoStartService(false);
    auto* const watcher = new QDBusPendingCallWatcher(system_.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        watcher->deleteLater();
        if (!reply.isError()) {
            followSession(reply.value().path());
        }
    });
}

void ScreenLock::followSession(const QString& path) {
    // Changes are told from the session's own path only.
    system_.connect(loginService, path, properties, "PropertiesChanged", this,
                    SLOT(sessionChanged(QString, QVariantMap)));
    QDBusMessage call = QDBusMessage::createMethodCall(loginService, path, properties, "Get");
    call << loginSession << "LockedHint";
    auto* const watcher = new QDBusPendingCallWatcher(system_.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        watcher->deleteLater();
        if (!reply.isError()) {
            set(loginService, reply.value().variant().toBool());
        }
    });
}

void ScreenLock::sessionChanged(const QString& interface, const QVariantMap& values) {
    if (interface == loginSession && values.contains("LockedHint")) {
        set(loginService, values.value("LockedHint").toBool());
    }
}

void ScreenLock::ownerChanged(const QString& name, const QString&, const QString& now) {
    if (now.isEmpty()) {
        set(name, false);
    }
}

void ScreenLock::set(const QString& who, bool locks) {
    const bool before = locked();
    locks ? static_cast<void>(locking_.insert(who)) : static_cast<void>(locking_.remove(who));
    if (locked() != before) {
        changed_();
    }
}

} // namespace vornic
