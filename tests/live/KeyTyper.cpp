#include "tests/live/KeyTyper.h"

#include <linux/input-event-codes.h>
#include <xcb/xtest.h>

#include <array>
#include <stdexcept>

namespace vornic {

KeyTyper::KeyTyper(const std::string& display) : connection_(display) {
    if (!connection_.alive()) {
        throw std::runtime_error("there is no X server: run live tests by ./dev test");
    }
}

int KeyTyper::letter(int place) {
    constexpr std::array letters{KEY_A, KEY_B, KEY_C, KEY_D, KEY_E, KEY_F, KEY_G, KEY_H, KEY_I,
                                 KEY_J, KEY_K, KEY_L, KEY_M, KEY_N, KEY_O, KEY_P, KEY_Q, KEY_R,
                                 KEY_S, KEY_T, KEY_U, KEY_V, KEY_W, KEY_X, KEY_Y, KEY_Z};
    return letters.at(static_cast<std::size_t>(place));
}

void KeyTyper::press(int key) {
    send(XCB_KEY_PRESS, key);
}

void KeyTyper::release(int key) {
    send(XCB_KEY_RELEASE, key);
}

void KeyTyper::type(int key) {
    press(key);
    release(key);
}

void KeyTyper::send(std::uint8_t type, int key) {
    xcb_test_fake_input(connection_.get(), type, static_cast<std::uint8_t>(key + 8),
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(connection_.get());
}

void KeyTyper::settle() {
    const X11Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
}

std::uint16_t KeyTyper::locks() {
    const X11Owned<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
    if (!pointer) {
        throw std::runtime_error("the X server has gone");
    }
    return pointer->mask & (XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
}

} // namespace vornic
