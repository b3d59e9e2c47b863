#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVariantMap>
#include <functional>

namespace vornic {

/// Whether the screen is locked or its saver runs, when keys can only be a password. Screen savers
/// tell it on the session's bus, the login manager on the system's. Thread: main.
class ScreenLock final : public QObject {
    Q_OBJECT

  public:
    ScreenLock(const QDBusConnection& session, const QDBusConnection& system,
               std::function<void()> changed);

    /// Begins to listen; returns at once.
    void start();

    bool locked() const { return !locking_.isEmpty(); }

  private Q_SLOTS:
    void saverChanged(const QDBusMessage& signal);
    void sessionChanged(const QString& interface, const QVariantMap& values);
    void ownerChanged(const QString& name, const QString& before, const QString& now);

  private:
    void askSaver(const QString& service, const QString& path);
    void findSession();
    void followSession(const QString& path);
    void set(const QString& who, bool locks);

    QDBusConnection session_;
    QDBusConnection system_;
    std::function<void()> changed_;
    /// Those who say that the screen is locked, by their names on the bus.
    QSet<QString> locking_;
};

} // namespace vornic
