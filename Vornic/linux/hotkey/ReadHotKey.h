#pragma once

#include "Vornic/linux/keys/InputDevices.h"
#include "Vornic/ports/HotKey.h"
#include "Vornic/typing/HotKeyMatch.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace vornic {

/// The hot key of a session where no X server matches it: the desktop does so, where it can, and
/// says so to `pressedElsewhere`; until then, or where it cannot, Alt+Super+K is recognised among
/// the keys that are read anyway. The window in front sees it too. Thread: key.
class ReadHotKey final : public HotKey, public KeyWitness {
  public:
    ReadHotKey();
    ~ReadHotKey() override;
    ReadHotKey(const ReadHotKey&) = delete;
    ReadHotKey& operator=(const ReadHotKey&) = delete;

    void keyboardCame(std::uint32_t keyboard, const std::vector<std::int64_t>& held) override;
    void keyMoved(std::uint32_t keyboard, std::int64_t keyCode, bool down) override;
    void keyboardGone(std::uint32_t keyboard) override;

    /// Whether somebody else matches the combination from now on. Thread: any.
    void leaveToOthers(bool leave) { leftToOthers_ = leave; }

    /// Somebody else has matched it; `onPress` is called on the key thread. Thread: any.
    void pressedElsewhere() const;

    /// Whether somebody else matches it, or a keyboard is read. Thread: any.
    bool registered() const override { return leftToOthers_ || keyboards_ > 0; }
    int fileDescriptor() const override { return presses_; }
    void dispatch() override;

  private:
    HotKeyMatch match_;
    std::atomic<bool> leftToOthers_{false};
    std::atomic<int> keyboards_{0}; // that are read
    int presses_;                   // an event counter
};

} // namespace vornic
