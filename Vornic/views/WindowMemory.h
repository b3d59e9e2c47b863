#pragma once

#include <QJsonObject>
#include <QString>
#include <QWindow>
#include <filesystem>
#include <optional>

namespace vornic {

/// What the windows remember from one run to the next: where they stood and how large, only the
/// latter where the desktop tells no places, and whether anything in them may move. Thread: main.
class WindowMemory {
  public:
    /// Keeps it in this file, which need not exist. Until then nothing is kept.
    void keepIn(const std::filesystem::path& file);

    /// Puts a window that is not shown yet where the one of that name was, as far as the screens
    /// still allow; otherwise leaves it.
    void restore(const QString& name, QWindow& window) const;
    /// Notes where it is.
    void note(const QString& name, const QWindow& window);

    /// Whether the user wants nothing to move; absent where that is left to the desktop.
    std::optional<bool> reducedMotion() const;
    void setReducedMotion(std::optional<bool> reduced);

  private:
    void write() const;

    std::filesystem::path file_;
    QJsonObject kept_;
};

} // namespace vornic
