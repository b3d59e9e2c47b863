#pragma once

#include <QDBusConnection>
#include <QRect>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace vornic {

/// The accessibility tree of a running program, as a screen reader finds it (AT-SPI). Needs a Qt
/// application and QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 in the program's environment.
class AccessibleTree {
  public:
    struct Node {
        QString service;
        QString path;
        QString name;
        quint32 role = 0;
        bool showing = false;
        bool focusable = false;
        /// On the screen, in pixels.
        QRect place;
    };

    /// Connects to the accessibility bus of the session. Throws std::runtime_error without one.
    AccessibleTree();
    ~AccessibleTree();

    /// Everything below the program called `application` that `wanted` accepts, windows first.
    std::vector<Node> all(const QString& application,
                          const std::function<bool(const Node&)>& wanted) const;

    /// The last one that is showing under `name`: of the window that was opened last.
    std::optional<Node> showing(const QString& application, const QString& name) const;

  private:
    void walk(const QString& service, const QString& path,
              const std::function<void(const Node&)>& visit, int depth) const;
    Node node(const QString& service, const QString& path) const;

    QDBusConnection bus_;
};

} // namespace vornic
