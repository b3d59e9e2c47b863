#include "Vornic/linux/desktop/DBusRunningCopy.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <algorithm>
#include <chrono>
#include <utility>

namespace vornic {

namespace {

const char* const objectPath = "/org/vornic/Vornic";
const char* const interfaceName = "org.vornic.Control1";
const char* const methodName = "Run";

/// A copy that has just started answers once it listens, after some tenths of a second.
constexpr std::chrono::milliseconds patience{10'000};

} // namespace

/// Run(as words) -> (i status, s text).
class DBusRunningCopy::Object final : public QDBusVirtualObject {
  public:
    QString introspect(const QString& /*path*/) const override {
        return QStringLiteral("<interface name=\"%1\"><method name=\"%2\">"
                              "<arg name=\"words\" type=\"as\" direction=\"in\"/>"
                              "<arg name=\"status\" type=\"i\" direction=\"out\"/>"
                              "<arg name=\"text\" type=\"s\" direction=\"out\"/>"
                              "</method></interface>")
            .arg(QLatin1String(interfaceName), QLatin1String(methodName));
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != QLatin1String(methodName) ||
            message.signature() != QLatin1String("as") ||
            (!message.interface().isEmpty() &&
             message.interface() != QLatin1String(interfaceName))) {
            return false;
        }
        const QStringList words = message.arguments().constFirst().toStringList();
        if (words.size() > qsizetype{mostWords} ||
            std::ranges::any_of(words, [](const QString& word) {
                return word.toUtf8().size() > qsizetype{longestWord};
            })) {
            connection.send(message.createErrorReply(
                QDBusError::LimitsExceeded,
                QStringLiteral("A command has too many or too long words.")));
            return true;
        }
        message.setDelayedReply(true);
        if (handler) {
            pass(message, connection);
        } else {
            waiting.push_back(message);
        }
        return true;
    }

    void pass(const QDBusMessage& message, const QDBusConnection& connection) const {
        Words words;
        for (const QString& word : message.arguments().constFirst().toStringList()) {
            words.push_back(word.toStdString());
        }
        handler(words, [message, connection](const ControlAnswer& answer) {
            connection.send(message.createReply(
                QVariantList{answer.status, QString::fromStdString(answer.text)}));
        });
    }

    Handler handler;
    std::vector<QDBusMessage> waiting;
};

DBusRunningCopy::DBusRunningCopy(QString name)
    : bus_(QDBusConnection::sessionBus()), name_(std::move(name)),
      object_(std::make_unique<Object>()) {}

DBusRunningCopy::~DBusRunningCopy() {
    if (claimed_) {
        // First the name, so that nobody asks an object that is not there.
        bus_.interface()->unregisterService(name_);
        bus_.unregisterObject(QLatin1String(objectPath));
    }
}

QString DBusRunningCopy::programName() {
    return QStringLiteral("org.vornic.Vornic");
}

RunningCopy::Claim DBusRunningCopy::claim() {
    if (!bus_.isConnected()) {
        return Claim::unavailable;
    }
    // The object first: whoever finds the name finds it too.
    bus_.registerVirtualObject(QLatin1String(objectPath), object_.get());
    const auto reply =
        bus_.interface()->registerService(name_, QDBusConnectionInterface::DontQueueService,
                                          QDBusConnectionInterface::DontAllowReplacement);
    claimed_ = reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
    if (claimed_) {
        return Claim::claimed;
    }
    bus_.unregisterObject(QLatin1String(objectPath));
    return reply.isValid() ? Claim::taken : Claim::unavailable;
}

void DBusRunningCopy::answer(Handler handler) {
    object_->handler = std::move(handler);
    for (const QDBusMessage& message : std::exchange(object_->waiting, {})) {
        object_->pass(message, bus_);
    }
}

ControlAnswer DBusRunningCopy::ask(const Words& words) {
    if (!bus_.isConnected()) {
        return {1, "There is no D-Bus session here, so a running Vornic can't be reached."};
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        name_, QLatin1String(objectPath), QLatin1String(interfaceName), QLatin1String(methodName));
    call.setAutoStartService(false);
    QStringList arguments;
    for (const std::string& word : words) {
        arguments.append(QString::fromStdString(word));
    }
    call << arguments;
    const QDBusMessage reply = bus_.call(call, QDBus::Block, static_cast<int>(patience.count()));
    if (reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("is")) {
        return {reply.arguments().at(0).toInt(), reply.arguments().at(1).toString().toStdString()};
    }
    if (reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner") ||
        reply.errorName() == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown")) {
        return {1, "Vornic is not running. Start it with: vornic"};
    }
    if (reply.errorName() == QDBusError::errorString(QDBusError::LimitsExceeded)) {
        return {1, reply.errorMessage().toStdString()};
    }
    return {1, "Vornic is running but does not answer: " + reply.errorMessage().toStdString()};
}

} // namespace vornic
