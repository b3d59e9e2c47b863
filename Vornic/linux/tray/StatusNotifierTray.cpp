#include "Vornic/linux/tray/StatusNotifierTray.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace vornic {

namespace {

const QString trayService = "org.kde.StatusNotifierWatcher";
const QString trayPath = "/StatusNotifierWatcher";
const QString itemPath = "/StatusNotifierItem";

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.argb;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.argb;
    argument.endStructure();
    return argument;
}

StatusNotifierTray::StatusNotifierTray()
    : service_(QString("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid())),
      watcher_(trayService, QDBusConnection::sessionBus(),
               QDBusServiceWatcher::WatchForOwnerChange) {
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<TrayPixmaps>();
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerService(service_);
    bus.registerObject(itemPath, this,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties |
                           QDBusConnection::ExportAllSignals);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                if (owner.isEmpty()) {
                    setVisible(false);
                } else {
                    registerItem();
                }
            });
    registerItem();
}

StatusNotifierTray::~StatusNotifierTray() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(itemPath);
    bus.unregisterService(service_);
}

void StatusNotifierTray::registerItem() {
    QDBusMessage call = QDBusMessage::createMethodCall(trayService, trayPath, trayService,
                                                       "RegisterStatusNotifierItem");
    call << service_;
    // A tray that is not there answers with an error: then its watcher calls again once it is.
    call.setAutoStartService(false);
    auto* const pending =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, 5000), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                setVisible(!QDBusPendingReply<>(*finished).isError());
                finished->deleteLater();
            });
}

void StatusNotifierTray::setVisible(bool visible) {
    if (visible != visible_) {
        visible_ = visible;
        onVisibleChange();
    }
}

void StatusNotifierTray::show(const Picture& picture, const std::string& line) {
    if (!(picture == picture_)) {
        picture_ = picture;
        Q_EMIT NewIcon();
    }
    if (const QString text = QString::fromStdString(line); text != line_) {
        line_ = text;
        Q_EMIT NewTitle();
    }
}

TrayPixmaps StatusNotifierTray::iconPixmap() const {
    if (picture_.size == 0) {
        return {};
    }
    return {{picture_.size, picture_.size,
             QByteArray(reinterpret_cast<const char*>(picture_.argb.data()),
                        static_cast<qsizetype>(picture_.argb.size()))}};
}

} // namespace vornic
