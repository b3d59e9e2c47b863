#pragma once

#include "Vornic/linux/quiet/PasswordFocus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <functional>

namespace vornic {

/// Looks up what has the keyboard's focus on the accessibility bus, which tells moves of the focus
/// only to those who listen when it moves. Goes through what is shown of the active windows.
/// Thread: main.
class FocusSearch final : public QObject {
  public:
    /// `found` may be called several times for one search, each time with something deeper.
    explicit FocusSearch(std::function<void(const AccessibleObject&)> found);

    /// Begins anew; returns at once.
    void begin(const QDBusConnection& bus);

    /// Finds nothing more: the focus has moved since, and was told.
    void end() { ++search_; }

  private:
    void descend(const AccessibleObject& object, int level);
    void look(const AccessibleObject& object, int level);
    template <typename Reply>
    void ask(const AccessibleObject& object, const QString& method,
             std::function<void(const Reply&)> answered);

    std::function<void(const AccessibleObject&)> found_;
    QDBusConnection bus_{QString()};
    /// Answers to an earlier search count for nothing.
    unsigned search_ = 0;
    int looks_ = 0;
};

} // namespace vornic
