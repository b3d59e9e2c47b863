#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vornic {

/// The program's place in the desktop's tray. Main thread.
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

    /// What it shows from now on, and the line that explains it.
    virtual void show(const Picture& picture, const std::string& line) = 0;

    /// The user clicked it; where, in the screen's pixels, or 0, 0 where the desktop does not say.
    std::function<void(int x, int y)> onActivate = [](int, int) {};
    /// `visible` has changed.
    std::function<void()> onVisibleChange = [] {};
};

} // namespace vornic
