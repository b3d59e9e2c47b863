#pragma once

#include "Vornic/ports/TrayIcon.h"

#include <string>

namespace vornic {

/// A tray that a test takes away and gives back.
class FakeTray final : public TrayIcon {
  public:
    bool visible() const override { return shown; }
    void show(const Picture& picture, const std::string& line) override {
        now = picture;
        text = line;
    }

    bool shown = true;
    Picture now;
    std::string text;
};

} // namespace vornic
