#pragma once

#include <QEvent>
#include <QMimeData>
#include <QObject>
#include <filesystem>
#include <functional>
#include <vector>

namespace vornic {

/// Takes board files and sound packs that are dropped on a window; leaves everything else to the
/// window, recordings above all. Install it as the window's event filter. Thread: main.
class BoardDrop : public QObject {
  public:
    using Files = std::vector<std::filesystem::path>;

    explicit BoardDrop(QObject* parent = nullptr) : QObject(parent) {}

    std::function<void(const Files&)> onDrop = [](auto&&) {};

  protected:
    bool eventFilter(QObject* window, QEvent* event) override;

  private:
    /// What is over the window: it is looked at once, and not at every step of the mouse.
    Files files_;
};

} // namespace vornic
