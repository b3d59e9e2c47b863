#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vornic {

/// One entry of the icon's menu.
struct TrayMenuEntry {
    enum class Mark : std::uint8_t { none, ticked, chosenOfSeveral };

    /// Plain text; empty for a line between groups.
    std::string text = {};
    std::function<void()> choose = [] {};
    Mark mark = Mark::none;
    /// Whether the mark is set.
    bool marked = false;
    std::vector<TrayMenuEntry> children = {};
};

/// The program's place in the desktop's tray. Thread: main.
class TrayIcon {
  public:
    /// A square of pixels, row by row, each as alpha, red, green, blue.
    struct Picture {
        int size = 0;
        std::vector<std::uint8_t> argb;
        bool operator==(const Picture&) const = default;
    };

    virtual ~TrayIcon() = default;

    /// Whether the desktop shows the icon. It may begin to do so later, or stop.
    virtual bool visible() const = 0;

    /// Whether that is yet to be seen: a tray took the icon, but may drop it.
    virtual bool undecided() const { return false; }

    /// The menu that the desktop opens beside the icon, from now on. Trays without menus tell a
    /// click instead.
    virtual void setMenu(const std::vector<TrayMenuEntry>& /*entries*/) {}

    /// What it shows from now on, and the line that explains it.
    virtual void show(const Picture& picture, const std::string& line) = 0;

    /// The user clicked it; where, in the screen's pixels, or 0, 0 where the desktop does not say.
    std::function<void(int x, int y)> onActivate = [](int, int) {};
    /// The wheel was turned over it, so many notches away from the user.
    std::function<void(double notches)> onScroll = [](double) {};
    /// `visible` or `undecided` has changed.
    std::function<void()> onVisibleChange = [] {};
};

} // namespace vornic
