#pragma once

#include "Vornic/linux/quiet/FocusSearch.h"
#include "Vornic/linux/quiet/PasswordFocus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>
#include <functional>

namespace vornic {

/// Follows the keyboard's focus on the accessibility bus, where programs tell what their fields are
/// for. Only the role of a field is asked for, never what is in it. Terminals and programs without
/// accessibility tell nothing. The bus may come late, die and come again. Thread: main.
class AccessibilityBus final : public QObject {
    Q_OBJECT

  public:
    /// `session` is the session's bus, which knows where the other one is.
    AccessibilityBus(const QDBusConnection& session, std::function<void()> changed);
    ~AccessibilityBus() override;

    /// Begins to listen; returns at once.
    void start();

    /// Whether the field with the focus takes a password.
    bool passwordFocused() const { return focus_.active(); }

    /// Whether the bus is there and tells its events.
    bool connected() const { return !name_.isEmpty(); }

  private Q_SLOTS:
    void disconnected();
    void stateChanged(const QDBusMessage& event);
    void windowLeft(const QDBusMessage& event);
    void ownerChanged(const QString& name, const QString& before, const QString& now);

  private:
    void findBus();
    void leaveBus();
    void connectTo(const QString& address);
    void listenToPrograms();
    void listen(const QString& event);
    void askRole(const AccessibleObject& object);
    void askFocus();
    void follow(const std::function<void()>& change);
    QDBusConnection bus() const;

    QDBusConnection session_;
    std::function<void()> changed_;
    QString address_;
    QString name_; // of the connection; empty while there is none
    int connections_ = 0;
    PasswordFocus focus_;
    FocusSearch search_;
    QTimer watch_;
    QTimer again_;
};

} // namespace vornic
