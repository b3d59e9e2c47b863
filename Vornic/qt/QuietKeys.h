#pragma once

#include <QObject>
#include <QWindow>
#include <cstddef>
#include <cstdint>
#include <set>

namespace vornic {

/// Keeps the program's own windows from complaining about keys that nothing in them wants: it
/// swallows those and counts them. Needs a QGuiApplication. Thread: main.
class QuietKeys final : public QObject {
  public:
    /// Watches every key press of the application, and every window that gets the focus from now
    /// on. Once, at the start.
    void install();

    /// Watches a window; harmless for one that is watched.
    void attach(QWindow& window);

    /// Swallows a key press.
    void keyDown();

    /// How many it has swallowed. Fatal beyond what 64 bits hold.
    std::int64_t taken() const { return taken_; }

    /// How many windows are watched.
    std::size_t attached() const { return windows_.size(); }

    bool eventFilter(QObject* receiver, QEvent* event) override;

  private:
    std::set<const QObject*> windows_;
    bool delivering_ = false;
    std::int64_t taken_ = 0;
};

} // namespace vornic
