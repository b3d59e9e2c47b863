#pragma once

#include "Vornic/ports/TrayIcon.h"

#include <functional>
#include <string>

namespace vornic {

/// One icon where a desktop may know two kinds of tray: `second` is wanted only while `first` does
/// not show it. Main thread.
class FallbackTray final : public TrayIcon {
  public:
    /// Both outlive it; `wantSecond` says whether `second` is to show itself.
    FallbackTray(TrayIcon& first, TrayIcon& second, std::function<void(bool)> wantSecond);

    bool visible() const override { return first_.visible() || second_.visible(); }
    void show(const Picture& picture, const std::string& line) override;

  private:
    TrayIcon& first_;
    TrayIcon& second_;
    std::function<void(bool)> wantSecond_;
};

} // namespace vornic
