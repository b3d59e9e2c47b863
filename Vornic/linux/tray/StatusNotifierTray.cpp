#include "Vornic/linux/tray/StatusNotifierTray.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>
#include <algorithm>
#include <utility>

namespace vornic {

namespace {

const QString trayService = "org.kde.StatusNotifierWatcher";
const QString trayPath = "/StatusNotifierWatcher";
const QString itemPath = "/StatusNotifierItem";
const QString menuPath = "/StatusNotifierItem/Menu";

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

StatusNotifierTray::StatusNotifierTray(std::chrono::milliseconds believedAfter)
    : service_(QString("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid())),
      watcher_(trayService, QDBusConnection::sessionBus(),
               QDBusServiceWatcher::WatchForOwnerChange) {
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<TrayPixmaps>();
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerService(service_);
    const auto all = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties |
                     QDBusConnection::ExportAllSignals;
    bus.registerObject(itemPath, this, all);
    bus.registerObject(menuPath, &menu_, all);
    probation_.setSingleShot(true);
    probation_.setInterval(believedAfter);
    connect(&probation_, &QTimer::timeout, this, [this] { look(); });
    for (const char* const change :
         {"StatusNotifierItemUnregistered", "StatusNotifierHostRegistered",
          "StatusNotifierHostUnregistered"}) {
        bus.connect(trayService, trayPath, trayService, change, this, SLOT(listChanged()));
    }
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                if (owner.isEmpty()) {
                    probation_.stop();
                    decide(false);
                } else {
                    registerItem();
                }
            });
    registerItem();
}

StatusNotifierTray::~StatusNotifierTray() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(itemPath);
    bus.unregisterObject(menuPath);
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
    undecided_ = !visible_;
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                if (QDBusPendingReply<>(*finished).isError()) {
                    decide(false);
                } else {
                    probation_.start();
                }
                finished->deleteLater();
            });
}

void StatusNotifierTray::listChanged() {
    // While the probation runs, its end looks.
    if (!probation_.isActive()) {
        look();
    }
}

void StatusNotifierTray::look() {
    QDBusMessage call = QDBusMessage::createMethodCall(trayService, trayPath,
                                                       "org.freedesktop.DBus.Properties", "GetAll");
    call << trayService;
    call.setAutoStartService(false);
    auto* const pending =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call, 5000), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher* finished) {
                const QDBusPendingReply<QVariantMap> reply = *finished;
                finished->deleteLater();
                const QVariantMap tray = reply.isError() ? QVariantMap() : reply.value();
                const bool listed =
                    isAmong(tray.value("RegisteredStatusNotifierItems").toStringList(),
                            QDBusConnection::sessionBus().baseService(),
                            static_cast<uint>(QCoreApplication::applicationPid()));
                const bool shown = tray.value("IsStatusNotifierHostRegistered").toBool();
                if (!listed && shown && visible_) {
                    // It was there and was dropped: once more, in case the tray began anew.
                    decide(false);
                    registerItem();
                    return;
                }
                decide(listed && shown);
            });
}

bool StatusNotifierTray::isAmong(const QStringList& items, const QString& owner, uint pid) {
    const QString name = QString("org.kde.StatusNotifierItem-%1-").arg(pid);
    return std::ranges::any_of(items, [&](const QString& item) {
        return item.startsWith(name) || item == owner || item.startsWith(owner + '/') ||
               item.startsWith(owner + '@');
    });
}

void StatusNotifierTray::Scroll(int delta, const QString& orientation) {
    // Some trays tell eighths of degrees, others notches.
    constexpr int notch = 120;
    constexpr int fewest = 15;
    if (delta != 0 && orientation.compare("horizontal", Qt::CaseInsensitive) != 0) {
        onScroll(std::abs(delta) >= fewest ? static_cast<double>(delta) / notch
                                           : (delta > 0 ? 1.0 : -1.0));
    }
}

QDBusObjectPath StatusNotifierTray::menu() {
    return QDBusObjectPath(menuPath);
}

void StatusNotifierTray::decide(bool visible) {
    const bool news = undecided_ || visible != visible_;
    undecided_ = false;
    visible_ = visible;
    if (news) {
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
