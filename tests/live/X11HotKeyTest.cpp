#include "Vornic/platform/linux/x11/X11HotKey.h"

#include "tests/live/KeyTyper.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <poll.h>

#include <chrono>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class X11HotKeyTest : public ::testing::Test {
  protected:
    void pressCombination() {
        typer.press(KeyTyper::keycode(KEY_LEFTALT));
        typer.press(KeyTyper::keycode(KEY_LEFTMETA));
        typer.press(KeyTyper::keycode(KEY_K));
    }
    void releaseCombination() {
        typer.release(KeyTyper::keycode(KEY_K));
        typer.release(KeyTyper::keycode(KEY_LEFTMETA));
        typer.release(KeyTyper::keycode(KEY_LEFTALT));
    }

    /// Dispatches until `onPress` was called that often.
    static bool waitForPresses(X11HotKey& hotKey, const int& presses, int count) {
        return waitFor([&] {
            pollfd wait{hotKey.fileDescriptor(), POLLIN, 0};
            ::poll(&wait, 1, 1);
            hotKey.dispatch();
            return presses >= count;
        });
    }

    KeyTyper typer;
};

TEST_F(X11HotKeyTest, hearsAltSuperKInEveryStateOfTheLocks) {
    X11HotKey hotKey;
    ASSERT_TRUE(hotKey.registered());
    int presses = 0;
    hotKey.onPress = [&presses] { ++presses; };
    const auto press = [&] {
        const int before = presses;
        pressCombination();
        const bool heard = waitForPresses(hotKey, presses, before + 1);
        releaseCombination();
        typer.settle();
        // A release and a press of the same millisecond are the server's way to repeat a key; no
        // finger is as fast.
        const auto released = std::chrono::steady_clock::now();
        waitFor([&] { return std::chrono::steady_clock::now() > released + 3ms; });
        return heard;
    };
    EXPECT_TRUE(press());
    typer.type(KeyTyper::keycode(KEY_NUMLOCK));
    EXPECT_TRUE(press());
    typer.type(KeyTyper::keycode(KEY_CAPSLOCK));
    EXPECT_TRUE(press());
    typer.type(KeyTyper::keycode(KEY_NUMLOCK));
    EXPECT_TRUE(press());
    typer.type(KeyTyper::keycode(KEY_CAPSLOCK));
    EXPECT_TRUE(press());
    EXPECT_EQ(presses, 5);
}

TEST_F(X11HotKeyTest, ignoresKWithOtherModifiers) {
    X11HotKey hotKey;
    int presses = 0;
    hotKey.onPress = [&presses] { ++presses; };
    typer.type(KeyTyper::keycode(KEY_K));
    typer.press(KeyTyper::keycode(KEY_LEFTALT));
    typer.type(KeyTyper::keycode(KEY_K));
    typer.release(KeyTyper::keycode(KEY_LEFTALT));
    // What comes after shows that what came before was heard and ignored.
    pressCombination();
    EXPECT_TRUE(waitForPresses(hotKey, presses, 1));
    releaseCombination();
    EXPECT_EQ(presses, 1);
}

TEST_F(X11HotKeyTest, aHeldCombinationCountsOnce) {
    X11HotKey hotKey;
    int presses = 0;
    hotKey.onPress = [&presses] { ++presses; };
    // A second combination shows how long the first was held: well into the server's repeats.
    X11Connection witness = connectToX11();
    ASSERT_TRUE(witness);
    pressCombination();
    ASSERT_TRUE(waitForPresses(hotKey, presses, 1));
    int dispatches = 0;
    waitFor(
        [&] {
            pollfd wait{hotKey.fileDescriptor(), POLLIN, 0};
            if (::poll(&wait, 1, 10) > 0) {
                ++dispatches;
                hotKey.dispatch();
            }
            return dispatches >= 5;
        },
        std::chrono::seconds(5));
    EXPECT_GE(dispatches, 5) << "the server did not repeat the key";
    EXPECT_EQ(presses, 1);
    releaseCombination();
}

TEST_F(X11HotKeyTest, isNotRegisteredWhileAnotherClientHoldsTheCombination) {
    {
        const X11HotKey first;
        ASSERT_TRUE(first.registered());
        const X11HotKey second;
        EXPECT_FALSE(second.registered());
    }
    // The first one is gone, and so is its grab.
    EXPECT_TRUE(waitFor([] { return X11HotKey().registered(); }));
}

TEST_F(X11HotKeyTest, aRefusedOneLeavesNoGrabBehind) {
    // Somebody holds the combination for one state of the locks only.
    X11Connection other = connectToX11();
    ASSERT_TRUE(other);
    xcb_grab_key(other.get(), 0, rootWindow(other.get()),
                 XCB_MOD_MASK_1 | XCB_MOD_MASK_4 | XCB_MOD_MASK_LOCK, KeyTyper::keycode(KEY_K),
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_flush(other.get());
    X11Owned<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(other.get(), xcb_get_input_focus(other.get()), nullptr));
    const X11HotKey refused;
    ASSERT_FALSE(refused.registered());
    const X11Owned<xcb_generic_error_t> error(xcb_request_check(
        other.get(), xcb_grab_key_checked(other.get(), 0, rootWindow(other.get()),
                                          XCB_MOD_MASK_1 | XCB_MOD_MASK_4, KeyTyper::keycode(KEY_K),
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    EXPECT_FALSE(error);
}

} // namespace
} // namespace vornic
