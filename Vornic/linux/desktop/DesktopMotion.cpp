#include "Vornic/linux/desktop/DesktopMotion.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace vornic {

namespace {

const QString portal = "org.freedesktop.portal.Desktop";
const QString portalPath = "/org/freedesktop/portal/desktop";
const QString settings = "org.freedesktop.portal.Settings";
const QString gnome = "org.gnome.desktop.interface";
const QString gnomeKey = "enable-animations";
const QString kde = "org.kde.kdeglobals.KDE";
const QString kdeKey = "AnimationDurationFactor";

/// Older portals wrap a value twice.
QVariant unwrapped(QVariant value) {
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

DesktopMotion::DesktopMotion(const QDBusConnection& session) : bus_(session) {}

void DesktopMotion::start() {
    if (!bus_.isConnected()) {
        return;
    }
    bus_.connect(portal, portalPath, settings, "SettingChanged", this,
                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(gnome, gnomeKey);
    ask(kde, kdeKey);
}

void DesktopMotion::ask(const QString& group, const QString& key) {
    QDBusMessage call = QDBusMessage::createMethodCall(portal, portalPath, settings, "Read");
    call << group << key;
    auto* const pending = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this, group, key](QDBusPendingCallWatcher* finished) {
                const QDBusPendingReply<QDBusVariant> reply = *finished;
                finished->deleteLater();
                if (!reply.isError()) {
                    settingChanged(group, key, reply.value());
                }
            });
}

void DesktopMotion::settingChanged(const QString& group, const QString& key,
                                   const QDBusVariant& value) {
    const QVariant plain = unwrapped(QVariant::fromValue(value));
    if (group == gnome && key == gnomeKey) {
        onReduced(!plain.toBool());
    } else if (group == kde && key == kdeKey) {
        bool isNumber = false;
        const double factor = plain.toDouble(&isNumber);
        if (isNumber) {
            onReduced(factor <= 0.0);
        }
    }
}

} // namespace vornic
