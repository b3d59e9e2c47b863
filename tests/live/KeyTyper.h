#pragma once

#include "Vornic/platform/linux/x11/X11Connection.h"

#include <cstdint>

namespace vornic {

/// Presses and releases keys of the X server of $DISPLAY, as a keyboard would.
class KeyTyper {
  public:
    /// Ends the test program where there is no X server.
    KeyTyper();
    KeyTyper(const KeyTyper&) = delete;
    KeyTyper& operator=(const KeyTyper&) = delete;
    /// Settles, since the server serves the next one's keys whenever it likes.
    ~KeyTyper() { settle(); }

    /// The X keycode of the letter with this place in the alphabet, 0 for A.
    static std::uint8_t letter(int place);

    /// X keycode of a key of the kernel's input layer.
    static std::uint8_t keycode(int evdevCode) { return static_cast<std::uint8_t>(evdevCode + 8); }

    void press(std::uint8_t keycode);
    void release(std::uint8_t keycode);

    /// Both, one after the other.
    void type(std::uint8_t keycode);

    /// Returns once the server has taken in everything sent.
    void settle();

  private:
    void send(std::uint8_t type, std::uint8_t keycode);

    X11Connection connection_;
};

} // namespace vornic
