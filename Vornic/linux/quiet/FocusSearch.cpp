#include "Vornic/linux/quiet/FocusSearch.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QList>
#include <utility>

namespace vornic {

/// An object as the accessibility bus lists it.
struct AccessibleReference {
    QString program;
    QDBusObjectPath path;
};

inline QDBusArgument& operator<<(QDBusArgument& argument, const AccessibleReference& reference) {
    argument.beginStructure();
    argument << reference.program << reference.path;
    argument.endStructure();
    return argument;
}

inline const QDBusArgument& operator>>(const QDBusArgument& argument,
                                       AccessibleReference& reference) {
    argument.beginStructure();
    argument >> reference.program >> reference.path;
    argument.endStructure();
    return argument;
}

namespace {

// Bits of an object's state.
constexpr unsigned stateActive = 1;
constexpr unsigned stateFocused = 12;
constexpr unsigned stateShowing = 25;

// Levels below the desktop.
constexpr int programLevel = 1;
constexpr int windowLevel = 2;

/// A long document has any number of objects, and nobody types a password into most of them.
constexpr int mostLooks = 4000;
/// A program that hangs is passed over.
constexpr int answerMillis = 1000;

bool has(const QList<uint>& state, unsigned bit) {
    return !state.isEmpty() && (state.front() >> bit & 1U) != 0;
}

} // namespace

FocusSearch::FocusSearch(std::function<void(const AccessibleObject&)> found)
    : found_(std::move(found)) {
    qDBusRegisterMetaType<AccessibleReference>();
    qDBusRegisterMetaType<QList<AccessibleReference>>();
}

void FocusSearch::begin(const QDBusConnection& bus) {
    bus_ = bus;
    ++search_;
    looks_ = 0;
    descend({.program = "org.a11y.atspi.Registry", .path = "/org/a11y/atspi/accessible/root"}, 0);
}

template <typename Reply>
void FocusSearch::ask(const AccessibleObject& object, const QString& method,
                      std::function<void(const Reply&)> answered) {
    const QDBusMessage call = QDBusMessage::createMethodCall(QString::fromStdString(object.program),
                                                             QString::fromStdString(object.path),
                                                             "org.a11y.atspi.Accessible", method);
    auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call, answerMillis), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                     [this, watcher, search = search_, answered = std::move(answered)] {
                         const QDBusPendingReply<Reply> reply = *watcher;
                         watcher->deleteLater();
                         if (search == search_ && !reply.isError()) {
                             answered(reply.value());
                         }
                     });
}

void FocusSearch::descend(const AccessibleObject& object, int level) {
    ask<QList<AccessibleReference>>(
        object, "GetChildren", [this, level](const QList<AccessibleReference>& children) {
            for (const AccessibleReference& child : children) {
                const AccessibleObject found{.program = child.program.toStdString(),
                                             .path = child.path.path().toStdString()};
                level + 1 == programLevel ? descend(found, programLevel) : look(found, level + 1);
            }
        });
}

void FocusSearch::look(const AccessibleObject& object, int level) {
    if (++looks_ > mostLooks) {
        return;
    }
    ask<QList<uint>>(object, "GetState", [this, object, level](const QList<uint>& state) {
        if (level > windowLevel && has(state, stateFocused)) {
            found_(object);
        }
        if (has(state, level == windowLevel ? stateActive : stateShowing)) {
            descend(object, level);
        }
    });
}

} // namespace vornic

Q_DECLARE_METATYPE(vornic::AccessibleReference)
