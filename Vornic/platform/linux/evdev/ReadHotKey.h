#pragma once

#include "Vornic/keystroke/HotKeyMatch.h"
#include "Vornic/platform/HotKey.h"

#include <cstdint>

namespace vornic {

/// Alt+Super+K recognised among the keys that are read anyway. Nobody can refuse it, and the window
/// in front sees it too. Key thread.
class ReadHotKey final : public HotKey {
  public:
    /// One key as the tap heard it.
    void key(std::int64_t keyCode, bool down) {
        if (match_.key(keyCode, down)) {
            onPress();
        }
    }

    bool registered() const override { return true; }
    int fileDescriptor() const override { return -1; }
    void dispatch() override {}

  private:
    HotKeyMatch match_;
};

} // namespace vornic
