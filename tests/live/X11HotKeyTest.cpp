#include "Vornic/linux/hotkey/X11HotKey.h"

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/PrivateXServer.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <poll.h>

#include <array>

namespace vornic {
namespace {

/// A hot key whose presses are read on the test's own thread.
class X11HotKeyTest : public ::testing::Test {
  protected:
    X11HotKeyTest() {
        hotKey.onPress = [this] { ++presses; };
    }
    ~X11HotKeyTest() override { setLocks(0); }

    void pressCombination(int key = KEY_K) {
        // A release and a press of the same millisecond would look like a repeat.
        const std::uint64_t start = clock.nanos();
        waitFor([&] { return clock.nanos() > start + 3'000'000; });
        typer.press(KEY_LEFTALT);
        typer.press(KEY_LEFTMETA);
        typer.press(key);
    }
    void releaseCombination(int key = KEY_K) {
        typer.release(key);
        typer.release(KEY_LEFTMETA);
        typer.release(KEY_LEFTALT);
    }

    /// Waits for `count` presses in all.
    bool waitForPresses(int count) {
        return waitFor([&] {
            hotKey.dispatch();
            return presses >= count;
        });
    }

    /// Types the combination; whether it was heard, once.
    bool works() {
        const int before = presses;
        pressCombination();
        const bool heard = waitForPresses(before + 1);
        releaseCombination();
        typer.settle();
        hotKey.dispatch();
        return heard && presses == before + 1;
    }

    void setLocks(unsigned wanted) {
        if (((typer.locks() ^ wanted) & XCB_MOD_MASK_LOCK) != 0) {
            typer.type(KEY_CAPSLOCK);
        }
        if (((typer.locks() ^ wanted) & XCB_MOD_MASK_2) != 0) {
            typer.type(KEY_NUMLOCK);
        }
        EXPECT_EQ(typer.locks(), wanted);
    }

    MonotonicClock clock;
    KeyTyper typer;
    X11HotKey hotKey;
    int presses = 0;
};

TEST_F(X11HotKeyTest, worksInEveryStateOfTheLocks) {
    ASSERT_TRUE(hotKey.registered());
    constexpr unsigned capsLock = XCB_MOD_MASK_LOCK;
    constexpr unsigned numLock = XCB_MOD_MASK_2;
    for (const unsigned locks : {0U, capsLock, numLock, capsLock | numLock}) {
        setLocks(locks);
        EXPECT_TRUE(works()) << locks;
    }
}

TEST_F(X11HotKeyTest, ignoresOtherCombinations) {
    typer.type(KEY_K);
    typer.press(KEY_LEFTALT);
    typer.type(KEY_K);
    typer.press(KEY_LEFTMETA);
    typer.type(KEY_J);
    typer.press(KEY_LEFTCTRL);
    typer.type(KEY_K);
    typer.release(KEY_LEFTCTRL);
    typer.release(KEY_LEFTALT);
    typer.type(KEY_K);
    typer.release(KEY_LEFTMETA);
    // What comes after shows that what came before was heard and ignored.
    pressCombination();
    EXPECT_TRUE(waitForPresses(1));
    releaseCombination();
    EXPECT_EQ(presses, 1);
}

TEST_F(X11HotKeyTest, aHeldCombinationCountsOnce) {
    pressCombination();
    ASSERT_TRUE(waitForPresses(1));
    // The repeats make the connection readable again and again.
    int repeats = 0;
    EXPECT_TRUE(waitFor([&] {
        pollfd wait{hotKey.fileDescriptor(), POLLIN, 0};
        if (::poll(&wait, 1, 10) > 0) {
            ++repeats;
            hotKey.dispatch();
        }
        return repeats >= 5;
    })) << "the server did not repeat the key";
    EXPECT_EQ(presses, 1);
    releaseCombination();
    EXPECT_TRUE(works());
}

TEST_F(X11HotKeyTest, otherKeysPressedWhileItIsHeldAreNotCounted) {
    pressCombination();
    ASSERT_TRUE(waitForPresses(1));
    typer.type(KEY_J);
    typer.type(KEY_SPACE);
    releaseCombination();
    typer.settle();
    hotKey.dispatch();
    EXPECT_EQ(presses, 1);
    EXPECT_TRUE(works());
}

TEST_F(X11HotKeyTest, isNotRegisteredWhileAnotherClientHoldsTheCombination) {
    ASSERT_TRUE(hotKey.registered());
    const X11HotKey second;
    EXPECT_FALSE(second.registered());
    EXPECT_TRUE(works());
    {
        const PrivateXServer elsewhere;
        const X11HotKey first(elsewhere.display());
        EXPECT_TRUE(first.registered());
        EXPECT_FALSE(X11HotKey(elsewhere.display()).registered());
    }
}

TEST(X11HotKey, leavesTheCombinationToOthersWhenItEnds) {
    const PrivateXServer server;
    EXPECT_TRUE(X11HotKey(server.display()).registered());
    EXPECT_TRUE(X11HotKey(server.display()).registered());
}

TEST(X11HotKey, keepsNothingWhenOneStateOfTheLocksIsTaken) {
    const PrivateXServer server;
    const X11Connection other(server.display());
    const auto grab = [&](unsigned locks) {
        return other.succeeded(xcb_grab_key_checked(
            other.get(), 0, other.root(),
            static_cast<std::uint16_t>(XCB_MOD_MASK_1 | XCB_MOD_MASK_4 | locks), KEY_K + 8,
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    };
    ASSERT_TRUE(grab(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
    const X11HotKey refused(server.display());
    EXPECT_FALSE(refused.registered());
    EXPECT_TRUE(grab(0));
    EXPECT_TRUE(grab(XCB_MOD_MASK_LOCK));
    EXPECT_TRUE(grab(XCB_MOD_MASK_2));
}

/// A server whose keyboard mapping the test may change.
class X11HotKeyMappingTest : public ::testing::Test {
  protected:
    void type(int key) {
        typer.press(KEY_LEFTALT);
        typer.press(KEY_LEFTMETA);
        typer.type(key);
        typer.release(KEY_LEFTMETA);
        typer.release(KEY_LEFTALT);
        typer.settle();
        hotKey.dispatch();
    }
    /// Makes a key type a symbol.
    void remap(int key, xcb_keysym_t symbol) {
        const std::array<xcb_keysym_t, 2> symbols{symbol, 0};
        EXPECT_TRUE(mapper.succeeded(xcb_change_keyboard_mapping_checked(
            mapper.get(), 1, static_cast<xcb_keycode_t>(key + 8), 2, symbols.data())));
    }
    bool isGrabbed(int key) {
        const auto modifiers = static_cast<std::uint16_t>(XCB_MOD_MASK_1 | XCB_MOD_MASK_4);
        const auto keycode = static_cast<xcb_keycode_t>(key + 8);
        const bool free = mapper.succeeded(
            xcb_grab_key_checked(mapper.get(), 0, mapper.root(), modifiers, keycode,
                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        EXPECT_TRUE(mapper.succeeded(
            xcb_ungrab_key_checked(mapper.get(), keycode, mapper.root(), modifiers)));
        return !free;
    }

    PrivateXServer server;
    KeyTyper typer{server.display()};
    X11Connection mapper{server.display()};
    X11HotKey hotKey{server.display()};
};

constexpr xcb_keysym_t symbolK = 0x6B;
constexpr xcb_keysym_t cyrillicEl = 0x6CC;

TEST_F(X11HotKeyMappingTest, staysInItsPlaceWhateverTheLayoutPutsThere) {
    int presses = 0;
    hotKey.onPress = [&presses] { ++presses; };
    ASSERT_TRUE(hotKey.registered());
    remap(KEY_V, symbolK);
    remap(KEY_K, cyrillicEl);
    type(KEY_V);
    type(KEY_K);
    EXPECT_TRUE(waitFor([&] {
        hotKey.dispatch();
        return presses == 1;
    }));
    EXPECT_TRUE(isGrabbed(KEY_K));
    EXPECT_FALSE(isGrabbed(KEY_V));
}

TEST_F(X11HotKeyMappingTest, isNotRegisteredWithoutAltOrSuper) {
    // Nothing but Super on either modifier, so that Alt has none.
    constexpr xcb_keysym_t symbolSuper = 0xFFEB;
    remap(KEY_LEFTALT, symbolSuper);
    remap(KEY_RIGHTALT, symbolSuper);
    EXPECT_TRUE(waitFor([&] {
        hotKey.dispatch();
        return !hotKey.registered();
    }));
    EXPECT_FALSE(isGrabbed(KEY_K));
}

TEST_F(X11HotKeyMappingTest, survivesTheDeathOfItsServer) {
    ASSERT_TRUE(hotKey.registered());
    ASSERT_GE(hotKey.fileDescriptor(), 0);
    server.kill();
    EXPECT_TRUE(waitFor([&] {
        hotKey.dispatch();
        return hotKey.fileDescriptor() < 0;
    }));
    EXPECT_FALSE(hotKey.registered());
    hotKey.dispatch();
}

TEST(X11HotKey, withoutAServerItIsNotRegistered) {
    X11HotKey nowhere(":63999");
    EXPECT_FALSE(nowhere.registered());
    EXPECT_EQ(nowhere.fileDescriptor(), -1);
    nowhere.dispatch();
}

} // namespace
} // namespace vornic
