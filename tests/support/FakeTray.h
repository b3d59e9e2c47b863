#pragma once

#include "Vornic/ports/TrayIcon.h"

#include <string>
#include <utility>
#include <vector>

namespace vornic {

/// A tray that a test takes away and gives back.
class FakeTray final : public TrayIcon {
  public:
    bool visible() const override { return shown; }
    bool undecided() const override { return unsure; }
    void setMenu(const std::vector<TrayMenuEntry>& entries) override { menu = entries; }
    void show(const Picture& picture, const std::string& line) override {
        now = picture;
        text = line;
    }

    bool shown = true;
    bool unsure = false;
    std::vector<TrayMenuEntry> menu;
    Picture now;
    std::string text;
};

} // namespace vornic
