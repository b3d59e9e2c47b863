#pragma once

#include "Vornic/ports/TrayIcon.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// One icon where a desktop may know two kinds of tray: `second` is wanted only while `first` does
/// not show it. The menu is the first one's alone. Thread: main.
class FallbackTray final : public TrayIcon {
  public:
    /// Both outlive it; `wantSecond` says whether `second` is to show itself.
    FallbackTray(TrayIcon& first, TrayIcon& second, std::function<void(bool)> wantSecond);

    bool visible() const override { return first_.visible() || second_.visible(); }
    bool undecided() const override { return first_.undecided(); }
    void setMenu(const std::vector<TrayMenuEntry>& entries) override { first_.setMenu(entries); }
    void show(const Picture& picture, const std::string& line) override;

  private:
    bool secondWanted() const { return !first_.visible() && !first_.undecided(); }

    TrayIcon& first_;
    TrayIcon& second_;
    std::function<void(bool)> wantSecond_;
};

} // namespace vornic
