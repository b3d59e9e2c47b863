#include "tests/live/KeyTyper.h"

#include "VornicCore/realtime/Fatal.h"

#include <linux/input-event-codes.h>
#include <xcb/xtest.h>

#include <array>

namespace vornic {

KeyTyper::KeyTyper() : connection_(connectToX11()) {
    require(connection_ != nullptr, "live tests need the X server that ./dev test gives them");
}

std::uint8_t KeyTyper::letter(int place) {
    constexpr std::array<std::uint8_t, 26> letters{
        KEY_A, KEY_B, KEY_C, KEY_D, KEY_E, KEY_F, KEY_G, KEY_H, KEY_I, KEY_J, KEY_K, KEY_L, KEY_M,
        KEY_N, KEY_O, KEY_P, KEY_Q, KEY_R, KEY_S, KEY_T, KEY_U, KEY_V, KEY_W, KEY_X, KEY_Y, KEY_Z};
    return keycode(letters.at(static_cast<std::size_t>(place)));
}

void KeyTyper::press(std::uint8_t keycode) {
    send(XCB_KEY_PRESS, keycode);
}

void KeyTyper::release(std::uint8_t keycode) {
    send(XCB_KEY_RELEASE, keycode);
}

void KeyTyper::type(std::uint8_t keycode) {
    press(keycode);
    release(keycode);
}

void KeyTyper::send(std::uint8_t type, std::uint8_t keycode) {
    xcb_test_fake_input(connection_.get(), type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(connection_.get());
}

void KeyTyper::settle() {
    const X11Owned<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
}

} // namespace vornic
