#include "Vornic/platform/linux/x11/X11KeyTap.h"

#include "Vornic/keystroke/KeyThread.h"
#include "Vornic/platform/linux/system/MonotonicClock.h"
#include "Vornic/platform/linux/x11/X11HotKey.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/KeyTyper.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <poll.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <mutex>
#include <vector>

namespace vornic {
namespace {

using ::testing::ElementsAre;

struct HeardKey {
    std::int64_t keyCode;
    bool down;
    std::uint64_t nanos;
};

/// A tap whose events are read on the test's own thread.
class X11KeyTapTest : public ::testing::Test {
  protected:
    X11KeyTapTest() {
        tap.onKey = [this](std::int64_t keyCode, bool down, std::uint64_t nanos) {
            heard.push_back({keyCode, down, nanos});
        };
    }

    /// Dispatches until `count` events were heard.
    bool listenFor(std::size_t count) {
        return waitFor([&] {
            pollfd wait{tap.fileDescriptor(), POLLIN, 0};
            ::poll(&wait, 1, 1);
            tap.dispatch();
            return heard.size() >= count;
        });
    }

    /// Dispatches everything that was sent up to now: a last key of its own marks the end.
    void listenToEverything() {
        constexpr std::int64_t f12 = 111;
        typer.type(KeyTyper::keycode(KEY_F12));
        ASSERT_TRUE(waitFor([&] {
            tap.dispatch();
            return heard.size() >= 2 && heard.back().keyCode == f12 && !heard.back().down;
        }));
        heard.resize(heard.size() - 2);
    }

    std::vector<std::int64_t> codes(bool down) const {
        std::vector<std::int64_t> found;
        for (const HeardKey& key : heard) {
            if (key.down == down) {
                found.push_back(key.keyCode);
            }
        }
        return found;
    }

    MonotonicClock clock;
    X11KeyTap tap{clock};
    KeyTyper typer;
    std::vector<HeardKey> heard;
};

TEST_F(X11KeyTapTest, hearsNothingBeforeItStartsAndAfterItStops) {
    EXPECT_EQ(tap.fileDescriptor(), -1);
    ASSERT_TRUE(tap.start());
    EXPECT_GE(tap.fileDescriptor(), 0);
    tap.stop();
    tap.stop();
    EXPECT_EQ(tap.fileDescriptor(), -1);
    typer.type(KeyTyper::letter(0));
    typer.settle();
    tap.dispatch();
    EXPECT_TRUE(heard.empty());
}

TEST_F(X11KeyTapTest, startingTwiceMakesOneTap) {
    ASSERT_TRUE(tap.start());
    const int descriptor = tap.fileDescriptor();
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(tap.fileDescriptor(), descriptor);
    typer.type(KeyTyper::letter(0));
    listenToEverything();
    EXPECT_EQ(heard.size(), 2u);
}

TEST_F(X11KeyTapTest, losesNoneOfTwoHundredKeysTypedAtOnce) {
    ASSERT_TRUE(tap.start());
    for (int key = 0; key < 200; ++key) {
        typer.type(KeyTyper::letter(key % 26));
    }
    ASSERT_TRUE(listenFor(400));
    listenToEverything();
    ASSERT_EQ(heard.size(), 400u);
    for (std::size_t event = 0; event < heard.size(); ++event) {
        EXPECT_EQ(heard[event].down, event % 2 == 0);
        EXPECT_EQ(heard[event].keyCode, heard[event % 52].keyCode);
    }
}

TEST_F(X11KeyTapTest, hearsTenKeysHeldTogether) {
    ASSERT_TRUE(tap.start());
    for (int key = 0; key < 10; ++key) {
        typer.press(KeyTyper::letter(key));
    }
    for (int key = 0; key < 10; ++key) {
        typer.release(KeyTyper::letter(key));
    }
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(0, 11, 8, 2, 14, 3, 5, 4, 34, 38));
    EXPECT_EQ(codes(false), codes(true));
}

TEST_F(X11KeyTapTest, hearsBothSidesOfTheModifiers) {
    ASSERT_TRUE(tap.start());
    for (const int key : {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTALT,
                          KEY_RIGHTALT, KEY_LEFTMETA, KEY_RIGHTMETA}) {
        typer.type(KeyTyper::keycode(key));
    }
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(56, 60, 59, 62, 58, 61, 55, 54));
    EXPECT_EQ(codes(false), codes(true));
}

TEST_F(X11KeyTapTest, capsLockIsOnePressAndNoRelease) {
    ASSERT_TRUE(tap.start());
    typer.type(KeyTyper::keycode(KEY_CAPSLOCK));
    typer.type(KeyTyper::keycode(KEY_CAPSLOCK));
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(57, 57));
    EXPECT_TRUE(codes(false).empty());
}

TEST_F(X11KeyTapTest, aHeldKeyIsOnePressAndOneRelease) {
    ASSERT_TRUE(tap.start());
    // Another client sees the server's repeats, so that the test knows when there were some.
    X11Connection witness = connectToX11();
    ASSERT_TRUE(witness);
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
    xcb_change_window_attributes(witness.get(), rootWindow(witness.get()), XCB_CW_EVENT_MASK,
                                 &events);
    xcb_set_input_focus(witness.get(), XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT,
                        XCB_CURRENT_TIME);
    X11Owned<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus_reply(witness.get(), xcb_get_input_focus(witness.get()), nullptr));
    typer.press(KeyTyper::letter(0));
    int pressesSeen = 0;
    ASSERT_TRUE(waitFor([&] {
        while (X11Owned<xcb_generic_event_t> event{xcb_poll_for_event(witness.get())}) {
            pressesSeen += (event->response_type & 0x7F) == XCB_KEY_PRESS ? 1 : 0;
        }
        return pressesSeen >= 4;
    }));
    typer.release(KeyTyper::letter(0));
    listenToEverything();
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_TRUE(heard[0].down);
    EXPECT_FALSE(heard[1].down);
}

TEST_F(X11KeyTapTest, stampsKeysWithTheTimeOfTheirPress) {
    ASSERT_TRUE(tap.start());
    const std::uint64_t before = clock.nanos();
    typer.type(KeyTyper::letter(0));
    typer.settle();
    const std::uint64_t after = clock.nanos();
    listenToEverything();
    ASSERT_EQ(heard.size(), 2u);
    // The server counts whole milliseconds.
    EXPECT_GE(heard[0].nanos + 1'000'000, before);
    EXPECT_LE(heard[0].nanos, after + 1'000'000);
    EXPECT_LE(heard[0].nanos, heard[1].nanos + 1'000'000);
}

TEST_F(X11KeyTapTest, hearsKeysWhileAHotKeyIsGrabbedAndHeld) {
    ASSERT_TRUE(tap.start());
    X11HotKey hotKey;
    ASSERT_TRUE(hotKey.registered());
    typer.press(KeyTyper::keycode(KEY_LEFTALT));
    typer.press(KeyTyper::keycode(KEY_LEFTMETA));
    typer.press(KeyTyper::keycode(KEY_K));
    typer.type(KeyTyper::keycode(KEY_J));
    typer.release(KeyTyper::keycode(KEY_K));
    typer.release(KeyTyper::keycode(KEY_LEFTMETA));
    typer.release(KeyTyper::keycode(KEY_LEFTALT));
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(58, 55, 40, 38));
    EXPECT_THAT(codes(false), ElementsAre(38, 40, 55, 58));
}

TEST_F(X11KeyTapTest, survivesTheDeathOfItsServer) {
    const ScratchFolder scratch;
    const std::string display = ":" + std::to_string(20000 + getpid() % 10000);
    ChildProcess server({"Xvfb", display, "-nolisten", "tcp"}, {}, (scratch / "xvfb.log").string());
    const std::string own = std::getenv("DISPLAY");
    ::setenv("DISPLAY", display.c_str(), 1);
    EXPECT_TRUE(waitFor([&] { return tap.start(); }));
    EXPECT_EQ(tap.refresh(), TapState::listening);
    server.end(SIGKILL);
    EXPECT_TRUE(waitFor([&] {
        tap.dispatch();
        return tap.fileDescriptor() < 0;
    }));
    EXPECT_EQ(tap.refresh(), TapState::needsRelaunch);
    ::setenv("DISPLAY", own.c_str(), 1);
    EXPECT_EQ(tap.refresh(), TapState::listening);
}

} // namespace
} // namespace vornic
