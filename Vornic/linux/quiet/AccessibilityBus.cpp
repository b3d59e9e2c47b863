#include "Vornic/linux/quiet/AccessibilityBus.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <chrono>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

const QString launcherService = "org.a11y.Bus";
const QString registryService = "org.a11y.atspi.Registry";

// Numbers of the accessibility interface.
constexpr uint rolePassword = 40;
constexpr uint stateFocused = 12;

/// A program that hangs must not keep keys silent.
constexpr auto answerLimit = 1s;
/// A program that dies or hides its window may not say that its field lost the focus.
constexpr auto watchInterval = 1s;
/// A bus that died may take a moment to come again.
constexpr auto retryInterval = 1s;

AccessibleObject senderOf(const QDBusMessage& event) {
    return {.program = event.service().toStdString(), .path = event.path().toStdString()};
}

QDBusMessage callTo(const AccessibleObject& object, const QString& method) {
    return QDBusMessage::createMethodCall(QString::fromStdString(object.program),
                                          QString::fromStdString(object.path),
                                          "org.a11y.atspi.Accessible", method);
}

} // namespace

AccessibilityBus::AccessibilityBus(const QDBusConnection& session, std::function<void()> changed)
    : session_(session), changed_(std::move(changed)),
      search_([this](const AccessibleObject& field) {
          follow([&] { focus_.focused(field); });
          askRole(field);
      }) {
    watch_.setInterval(watchInterval);
    QObject::connect(&watch_, &QTimer::timeout, this, [this] { askFocus(); });
    again_.setSingleShot(true);
    QObject::connect(&again_, &QTimer::timeout, this, [this] { findBus(); });
}

AccessibilityBus::~AccessibilityBus() {
    if (!name_.isEmpty()) {
        QDBusConnection::disconnectFromBus(name_);
    }
}

QDBusConnection AccessibilityBus::bus() const {
    return QDBusConnection(name_);
}

void AccessibilityBus::start() {
    auto* const launcher = new QDBusServiceWatcher(launcherService, session_,
                                                   QDBusServiceWatcher::WatchForOwnerChange, this);
    QObject::connect(launcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                     [this](const QString&, const QString&, const QString& now) {
                         // One that comes has a bus of its own.
                         if (!now.isEmpty()) {
                             findBus();
                         }
                     });
    findBus();
}

void AccessibilityBus::findBus() {
    again_.stop();
    const QDBusMessage call = QDBusMessage::createMethodCall(launcherService, "/org/a11y/bus",
                                                             launcherService, "GetAddress");
    auto* const watcher = new QDBusPendingCallWatcher(session_.asyncCall(call), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QString> reply = *watcher;
        watcher->deleteLater();
        if (!reply.isError()) {
            connectTo(reply.value());
        }
    });
}

void AccessibilityBus::leaveBus() {
    if (!name_.isEmpty()) {
        QDBusConnection::disconnectFromBus(std::exchange(name_, QString()));
    }
    search_.end();
    follow([&] { focus_ = PasswordFocus(); });
}

void AccessibilityBus::disconnected() {
    leaveBus();
    again_.start(retryInterval);
}

void AccessibilityBus::connectTo(const QString& address) {
    if (address == address_ && bus().isConnected()) {
        return;
    }
    leaveBus();
    address_ = address;
    const QString name =
        QString("vornic-accessibility-%1-%2").arg(quintptr(this)).arg(++connections_);
    QDBusConnection bus = QDBusConnection::connectToBus(address, name);
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        again_.start(retryInterval);
        return;
    }
    name_ = name;
    bus.connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local", "Disconnected",
                this, SLOT(disconnected()));
    bus.connect({}, {}, "org.a11y.atspi.Event.Object", "StateChanged", this,
                SLOT(stateChanged(QDBusMessage)));
    for (const char* const left : {"Deactivate", "Destroy"}) {
        bus.connect({}, {}, "org.a11y.atspi.Event.Window", left, this,
                    SLOT(windowLeft(QDBusMessage)));
    }
    bus.connect("org.freedesktop.DBus", {}, "org.freedesktop.DBus", "NameOwnerChanged", this,
                SLOT(ownerChanged(QString, QString, QString)));
    listenToPrograms();
}

void AccessibilityBus::listenToPrograms() {
    // Programs tell what somebody has asked to be told.
    listen("object:state-changed:focused");
    listen("window:deactivate");
    listen("window:destroy");
    // Where the focus is already, nobody tells.
    search_.begin(bus());
}

void AccessibilityBus::listen(const QString& event) {
    QDBusMessage call = QDBusMessage::createMethodCall(registryService, "/org/a11y/atspi/registry",
                                                       registryService, "RegisterEvent");
    call << event;
    bus().asyncCall(call);
}

void AccessibilityBus::follow(const std::function<void()>& change) {
    const bool before = focus_.active();
    change();
    if (focus_.active() == before) {
        return;
    }
    focus_.active() ? watch_.start() : watch_.stop();
    changed_();
}

void AccessibilityBus::stateChanged(const QDBusMessage& event) {
    const QList<QVariant> arguments = event.arguments();
    if (arguments.size() < 2 || arguments[0].toString() != "focused") {
        return;
    }
    search_.end();
    const AccessibleObject object = senderOf(event);
    if (arguments[1].toInt() == 0) {
        follow([&] { focus_.unfocused(object); });
    } else {
        follow([&] { focus_.focused(object); });
        askRole(object);
    }
}

void AccessibilityBus::askRole(const AccessibleObject& object) {
    const auto call =
        bus().asyncCall(callTo(object, "GetRole"),
                        static_cast<int>(std::chrono::milliseconds(answerLimit).count()));
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, object] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        follow([&] { focus_.answered(object, !reply.isError() && reply.value() == rolePassword); });
    });
}

void AccessibilityBus::askFocus() {
    const auto object = focus_.toWatch();
    if (!object) {
        return;
    }
    const auto call =
        bus().asyncCall(callTo(*object, "GetState"),
                        static_cast<int>(std::chrono::milliseconds(answerLimit).count()));
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, object] {
        const QDBusPendingReply<QList<uint>> reply = *watcher;
        watcher->deleteLater();
        const bool focused = !reply.isError() && !reply.value().isEmpty() &&
                             (reply.value().front() >> stateFocused & 1U) != 0;
        if (!focused) {
            follow([&] { focus_.unfocused(*object); });
        }
    });
}

void AccessibilityBus::windowLeft(const QDBusMessage& event) {
    follow([&] { focus_.left(event.service().toStdString()); });
}

void AccessibilityBus::ownerChanged(const QString& name, const QString&, const QString& now) {
    if (now.isEmpty()) {
        follow([&] { focus_.left(name.toStdString()); });
    } else if (name == registryService) {
        // A new one knows nothing of who has asked before.
        listenToPrograms();
    }
}

} // namespace vornic
