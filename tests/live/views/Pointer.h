#pragma once

#include "Vornic/linux/x11/X11Connection.h"

#include <QPoint>
#include <cstdint>

namespace vornic {

/// Moves and presses the mouse of the X server in $DISPLAY as a hand would.
class Pointer {
  public:
    Pointer();

    void move(QPoint place);
    void press(QPoint place);
    void release();
    void click(QPoint place);
    /// Presses at `from` and lets go at `to`, on the way there in several steps.
    void drag(QPoint from, QPoint to);
    /// Turns the wheel where the mouse is, towards the end of what it scrolls.
    void scrollOn(int steps);

  private:
    void button(bool down, std::uint8_t which = 1);
    void settle();

    X11Connection connection_;
};

} // namespace vornic
