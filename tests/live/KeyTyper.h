#pragma once

#include "Vornic/linux/x11/X11Connection.h"

#include <cstdint>
#include <string>

namespace vornic {

/// Presses and releases keys of an X server as a keyboard would. Keys are given by their evdev
/// codes (KEY_A).
class KeyTyper {
  public:
    /// For `display`, or $DISPLAY if that is empty. Throws where there is no such server.
    explicit KeyTyper(const std::string& display = {});
    /// Settles, since the server serves the next one's keys whenever it likes.
    ~KeyTyper() { settle(); }
    KeyTyper(const KeyTyper&) = delete;
    KeyTyper& operator=(const KeyTyper&) = delete;

    void press(int key);
    void release(int key);

    /// Both, one after the other.
    void type(int key);

    /// The evdev code of the letter with this place in the alphabet, 0 for A.
    static int letter(int place);

    /// Returns once the server has taken in everything sent.
    void settle();

    /// Whether Caps Lock and Num Lock are on: the modifier bits of those that are.
    std::uint16_t locks();

  private:
    void send(std::uint8_t type, int key);

    X11Connection connection_;
};

} // namespace vornic
