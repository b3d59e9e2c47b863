#pragma once

#include <QEvent>
#include <QObject>
#include <filesystem>
#include <functional>

namespace vornic {

/// Takes board files that are dropped on a window; leaves everything else to the window. Install it
/// as the window's event filter. Thread: main.
class BoardDrop : public QObject {
  public:
    explicit BoardDrop(QObject* parent = nullptr) : QObject(parent) {}

    std::function<void(const std::filesystem::path&)> onDrop = [](auto&&) {};

  protected:
    bool eventFilter(QObject* window, QEvent* event) override;
};

} // namespace vornic
