#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/ports/TrayIcon.h"
#include "Vornic/views/Views.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <optional>
#include <vector>

namespace vornic {

/// How the program shows itself on the desktop: by an icon in the tray whose click opens the panel,
/// or, where there is no tray, by the panel as an ordinary window. Thread: main.
class Presence : public QObject {
  public:
    /// Both outlive it. `hidden`: no window opens by itself, tray or not.
    Presence(AppModel& model, TrayIcon& tray, bool hidden);

    Views& views() { return views_; }

    /// Shows the board file that is looked at, or else the panel: somebody started the program
    /// again.
    void comeForward();

  private:
    /// What the icon's menu shows.
    struct MenuState {
        bool soundsOn = false;
        double volume = 0;
        std::uint64_t boards = 0;
        bool operator==(const MenuState&) const = default;
    };

    void showState();
    void showMenu();
    void trayChanged();
    void showWithoutTray();

    AppModel& model_;
    TrayIcon& tray_;
    Views views_;
    QTimer waitForTray_;
    QString symbol_;
    TrayIcon::Picture picture_;
    std::optional<MenuState> menu_;
    bool hidden_;
    /// Whether the first wait for a tray is over.
    bool shownBefore_ = false;
};

} // namespace vornic
