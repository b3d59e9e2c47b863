#pragma once

#include "Vornic/ports/RunningCopy.h"

#include <QDBusConnection>
#include <QString>
#include <memory>

namespace vornic {

/// The running copy owns a name on the session bus and answers method calls there. Needs a
/// QCoreApplication. Thread: main.
class DBusRunningCopy final : public RunningCopy {
  public:
    /// `name` is the name on the bus; tests take another one than the program's.
    explicit DBusRunningCopy(QString name = programName());
    ~DBusRunningCopy() override;
    DBusRunningCopy(const DBusRunningCopy&) = delete;
    DBusRunningCopy& operator=(const DBusRunningCopy&) = delete;

    Claim claim() override;
    void answer(Handler handler) override;
    ControlAnswer ask(const Words& words) override;

    /// "org.vornic.Vornic".
    static QString programName();

  private:
    class Object;

    QDBusConnection bus_;
    QString name_;
    std::unique_ptr<Object> object_;
    bool claimed_ = false;
};

} // namespace vornic
