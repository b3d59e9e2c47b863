#pragma once

#include "Vornic/ports/HotKey.h"
#include "Vornic/typing/HotKeyMatch.h"

#include <atomic>
#include <cstdint>

namespace vornic {

/// The hot key of a session where no X server matches it: the desktop does so, where it can, and
/// says so to `pressedElsewhere`; until then, or where it cannot, Alt+Super+K is recognised among
/// the keys that are read anyway. Nobody can refuse that, and the window in front sees it too.
class ReadHotKey final : public HotKey {
  public:
    ReadHotKey();
    ~ReadHotKey() override;
    ReadHotKey(const ReadHotKey&) = delete;
    ReadHotKey& operator=(const ReadHotKey&) = delete;

    /// One key as the tap heard it. Key thread.
    void key(std::int64_t keyCode, bool down);

    /// Whether somebody else matches the combination from now on. Any thread.
    void leaveToOthers(bool leave) { leftToOthers_ = leave; }

    /// Somebody else has matched it; `onPress` is called on the key thread. Any thread.
    void pressedElsewhere() const;

    bool registered() const override { return true; }
    int fileDescriptor() const override { return presses_; }
    void dispatch() override;

  private:
    HotKeyMatch match_;
    std::atomic<bool> leftToOthers_{false};
    int presses_; // an event counter
};

} // namespace vornic
