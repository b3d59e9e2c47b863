#pragma once

#include "Vornic/linux/x11/X11Connection.h"
#include "Vornic/ports/TrayIcon.h"

#include <QObject>
#include <QSocketNotifier>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vornic {

/// An icon in the tray of an X11 desktop that knows only the older way: a small window of ours that
/// the tray takes into its own (freedesktop.org's System Tray and XEmbed protocols). Asks again
/// whenever a tray appears. Thread: main, with an event loop.
class XEmbedTray final : public QObject, public TrayIcon {
  public:
    /// On `display`, or $DISPLAY if that is empty. Without an X server it never shows; it is not
    /// asked for before the icon is wanted.
    explicit XEmbedTray(std::string display = {});

    /// Whether $DISPLAY has a tray of this kind now.
    static bool offered();

    /// Whether to be in the tray at all; not at first. Another tray may already show the icon.
    void setWanted(bool wanted);

    bool visible() const override { return docked_; }
    void show(const Picture& picture, const std::string& line) override;

  private:
    void connectToServer();
    void dispatch();
    void handle(const xcb_generic_event_t& event);
    xcb_window_t trayWindow();
    void findTray();
    void dock();
    void leave();
    void setDocked(bool docked);
    void makeWindow();
    void draw();
    void name();
    xcb_atom_t atom(const std::string& name);

    std::string display_;
    std::optional<X11Connection> connection_; // absent until the icon is wanted
    std::unique_ptr<QSocketNotifier> readable_;
    xcb_window_t tray_ = XCB_NONE;
    xcb_window_t window_ = XCB_NONE;
    xcb_colormap_t colours_ = XCB_NONE;
    std::uint8_t depth_ = 0;
    int side_ = 0;
    Picture picture_;
    std::string line_ = "Vornic";
    bool wanted_ = false;
    bool docked_ = false;
};

} // namespace vornic
