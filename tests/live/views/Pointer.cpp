#include "tests/live/views/Pointer.h"

#include <xcb/xtest.h>

#include <cstdint>
#include <stdexcept>

namespace vornic {

Pointer::Pointer() : connection_({}) {
    if (!connection_.alive()) {
        throw std::runtime_error("there is no X server");
    }
}

void Pointer::move(QPoint place) {
    xcb_test_fake_input(connection_.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME,
                        connection_.root(), static_cast<std::int16_t>(place.x()),
                        static_cast<std::int16_t>(place.y()), 0);
    settle();
}

void Pointer::button(bool down, std::uint8_t which) {
    xcb_test_fake_input(connection_.get(), down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, which,
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    settle();
}

void Pointer::press(QPoint place) {
    move(place);
    button(true);
}

void Pointer::release() {
    button(false);
}

void Pointer::click(QPoint place) {
    press(place);
    release();
}

void Pointer::drag(QPoint from, QPoint to) {
    constexpr int steps = 20;
    press(from);
    for (int step = 1; step <= steps; ++step) {
        move(from + (to - from) * step / steps);
    }
    release();
}

void Pointer::scrollOn(int steps) {
    constexpr std::uint8_t wheelDown = 5;
    for (int step = 0; step < steps; ++step) {
        button(true, wheelDown);
        button(false, wheelDown);
    }
}

void Pointer::settle() {
    const X11Owned<xcb_get_input_focus_reply_t> answer(xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
}

} // namespace vornic
