#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <functional>

namespace vornic {

/// Whether the user of this desktop wants nothing to move by itself, as its portal tells. Asks
/// once, without waiting, and asks to be told of changes. Thread: main.
class DesktopMotion : public QObject {
    Q_OBJECT

  public:
    /// Told when the desktop has answered, and whenever it says so anew.
    std::function<void(bool reduced)> onReduced = [](bool) {};

    explicit DesktopMotion(const QDBusConnection& session = QDBusConnection::sessionBus());

    /// Asks. Where there is no portal, nothing is told.
    void start();

  public Q_SLOTS:
    // As the bus names it.
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    void ask(const QString& group, const QString& key);

    QDBusConnection bus_;
};

} // namespace vornic
