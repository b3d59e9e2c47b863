#include "Vornic/linux/quiet/AccessibilitySwitch.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <utility>

namespace vornic {

namespace {

const QString service = "org.a11y.Bus";
const QString path = "/org/a11y/bus";
const QString status = "org.a11y.Status";
const QString properties = "org.freedesktop.DBus.Properties";

constexpr int lastWordMillis = 1000;

} // namespace

AccessibilitySwitch::AccessibilitySwitch(const QDBusConnection& session) : session_(session) {}

AccessibilitySwitch::~AccessibilitySwitch() {
    if (turnedOn_ && !screenReader_) {
        // Nobody is left to follow up, so this waits, a moment at most.
        session_.call(turn(false), QDBus::Block, lastWordMillis);
    }
}

void AccessibilitySwitch::start() {
    auto* const watcher =
        new QDBusServiceWatcher(service, session_, QDBusServiceWatcher::WatchForOwnerChange, this);
    QObject::connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                     [this](const QString&, const QString&, const QString& now) {
                         on_.reset();
                         if (!now.isEmpty()) {
                             read();
                         }
                     });
    session_.connect(service, path, properties, "PropertiesChanged", this,
                     SLOT(changed(QString, QVariantMap)));
    read();
}

void AccessibilitySwitch::wish(bool on) {
    wished_ = on;
    apply();
}

QDBusMessage AccessibilitySwitch::call(const QString& method) const {
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, properties, method);
    message << status;
    return message;
}

QDBusMessage AccessibilitySwitch::turn(bool on) const {
    QDBusMessage message = call("Set");
    message << QString("IsEnabled") << QVariant::fromValue(QDBusVariant(on));
    return message;
}

void AccessibilitySwitch::read() {
    auto* const watcher = new QDBusPendingCallWatcher(session_.asyncCall(call("GetAll")), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QVariantMap> reply = *watcher;
        watcher->deleteLater();
        if (!reply.isError()) {
            take(reply.value());
            apply();
        }
    });
}

void AccessibilitySwitch::changed(const QString& interface, const QVariantMap& values) {
    if (interface == status) {
        take(values);
    }
}

void AccessibilitySwitch::take(const QVariantMap& values) {
    if (values.contains("IsEnabled")) {
        on_ = values.value("IsEnabled").toBool();
    }
    screenReader_ = values.value("ScreenReaderEnabled", screenReader_).toBool();
}

void AccessibilitySwitch::apply() {
    if (wished_ && on_ == false) {
        turnedOn_ = true;
        on_ = true;
        session_.asyncCall(turn(true));
    } else if (!wished_ && std::exchange(turnedOn_, false) && !screenReader_) {
        on_ = false;
        session_.asyncCall(turn(false));
    }
}

} // namespace vornic
