#include "Vornic/linux/keys/X11KeyTap.h"

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/hotkey/X11HotKey.h"
#include "Vornic/typing/KeyThread.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/PrivateXServer.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct HeardKey {
    std::int64_t keyCode;
    bool down;
    std::uint64_t nanos;
    /// When it was delivered.
    std::uint64_t heardNanos;
};

/// A tap whose events are read on the test's own thread.
class X11KeyTapTest : public ::testing::Test {
  protected:
    X11KeyTapTest() {
        tap.onKey = [this](std::int64_t keyCode, bool down, std::uint64_t nanos) {
            heard.push_back({keyCode, down, nanos, clock.nanos()});
        };
    }

    /// Delivers everything that was typed up to now: a key of its own marks the end.
    void listenToEverything() {
        constexpr std::int64_t f12 = 111;
        typer.type(KEY_F12);
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
    typer.type(KEY_A);
    typer.settle();
    tap.dispatch();
    EXPECT_THAT(heard, IsEmpty());
    ASSERT_TRUE(tap.start());
    typer.type(KEY_S);
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(1));
}

TEST_F(X11KeyTapTest, startingTwiceMakesOneTap) {
    ASSERT_TRUE(tap.start());
    const int descriptor = tap.fileDescriptor();
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(tap.refresh(), TapState::listening);
    EXPECT_EQ(tap.fileDescriptor(), descriptor);
    typer.type(KEY_A);
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(0));
    EXPECT_THAT(codes(false), ElementsAre(0));
}

TEST_F(X11KeyTapTest, namesItsDisplay) {
    EXPECT_EQ(tap.description(), std::string("X11 raw keys of ") + std::getenv("DISPLAY"));
    EXPECT_EQ(X11KeyTap(clock, ":77").description(), "X11 raw keys of :77");
}

TEST_F(X11KeyTapTest, losesNoneOfTwoHundredKeysTypedAtOnce) {
    ASSERT_TRUE(tap.start());
    for (int key = 0; key < 200; ++key) {
        typer.type(KeyTyper::letter(key % 26));
    }
    listenToEverything();
    ASSERT_EQ(heard.size(), 400U);
    for (std::size_t event = 0; event < heard.size(); ++event) {
        EXPECT_EQ(heard[event].down, event % 2 == 0);
        EXPECT_EQ(heard[event].keyCode, heard[event % 52].keyCode);
    }
    EXPECT_EQ(heard[50].keyCode, 6); // Z, the 26th
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
    ASSERT_EQ(heard.size(), 20U);
    EXPECT_TRUE(heard[9].down);
    EXPECT_FALSE(heard[10].down);
    EXPECT_THAT(codes(true), ElementsAre(0, 11, 8, 2, 14, 3, 5, 4, 34, 38));
    EXPECT_EQ(codes(false), codes(true));
}

TEST_F(X11KeyTapTest, hearsChordsInOrder) {
    ASSERT_TRUE(tap.start());
    typer.press(KEY_LEFTCTRL);
    typer.press(KEY_LEFTSHIFT);
    typer.press(KEY_T);
    typer.release(KEY_LEFTSHIFT);
    typer.release(KEY_T);
    typer.release(KEY_LEFTCTRL);
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(59, 56, 17));
    EXPECT_THAT(codes(false), ElementsAre(56, 17, 59));
}

TEST_F(X11KeyTapTest, hearsBothSidesOfTheModifiers) {
    ASSERT_TRUE(tap.start());
    for (const int key : {KEY_LEFTSHIFT, KEY_RIGHTSHIFT, KEY_LEFTCTRL, KEY_RIGHTCTRL, KEY_LEFTALT,
                          KEY_RIGHTALT, KEY_LEFTMETA, KEY_RIGHTMETA}) {
        typer.type(key);
    }
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(56, 60, 59, 62, 58, 61, 55, 54));
    EXPECT_EQ(codes(false), codes(true));
}

TEST_F(X11KeyTapTest, capsLockIsOnePressAndNoRelease) {
    ASSERT_TRUE(tap.start());
    typer.type(KEY_CAPSLOCK);
    typer.type(KEY_CAPSLOCK);
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(57, 57));
    EXPECT_THAT(codes(false), IsEmpty());
}

TEST_F(X11KeyTapTest, aHeldKeyIsOnePressAndOneRelease) {
    ASSERT_TRUE(tap.start());
    // Another client sees the server's repeats, so that the test knows when there were some.
    X11Connection witness{{}};
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
    xcb_change_window_attributes(witness.get(), witness.root(), XCB_CW_EVENT_MASK, &events);
    ASSERT_TRUE(witness.succeeded(
        xcb_set_input_focus_checked(witness.get(), XCB_INPUT_FOCUS_POINTER_ROOT,
                                    XCB_INPUT_FOCUS_POINTER_ROOT, XCB_CURRENT_TIME)));
    typer.press(KEY_A);
    int presses = 0;
    EXPECT_TRUE(waitFor([&] {
        witness.forEachEvent([&](const xcb_generic_event_t& event) {
            presses += event.response_type == XCB_KEY_PRESS ? 1 : 0;
        });
        return presses >= 4;
    })) << "the server did not repeat the key";
    typer.release(KEY_A);
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(0));
    EXPECT_THAT(codes(false), ElementsAre(0));
}

TEST_F(X11KeyTapTest, aKeyHeldWhileItStartsIsHeardWhenItIsReleased) {
    typer.press(KEY_A);
    typer.settle();
    ASSERT_TRUE(tap.start());
    typer.release(KEY_A);
    // Programs that simulate keys may release one that is not down.
    typer.release(KEY_A);
    listenToEverything();
    EXPECT_THAT(codes(true), IsEmpty());
    EXPECT_THAT(codes(false), ElementsAre(0));
}

TEST_F(X11KeyTapTest, stampsKeysWithTheTimeOfTheirPress) {
    ASSERT_TRUE(tap.start());
    // The server cuts its time to a millisecond, and its clock may tick as rarely.
    constexpr std::uint64_t precision = 2'000'000;
    for (int key = 0; key < 50; ++key) {
        const std::uint64_t before = clock.nanos();
        typer.type(KEY_A);
        typer.settle();
        const std::uint64_t after = clock.nanos();
        heard.clear();
        listenToEverything();
        ASSERT_EQ(heard.size(), 2U);
        EXPECT_GE(heard[0].nanos + precision, before);
        EXPECT_LE(heard[0].nanos, after + precision);
        EXPECT_LE(heard[0].nanos, heard[0].heardNanos);
        EXPECT_LT(heard[0].heardNanos - heard[0].nanos, 1'000'000'000U);
    }
}

TEST_F(X11KeyTapTest, stampsNeverRunBackwards) {
    ASSERT_TRUE(tap.start());
    for (int key = 0; key < 500; ++key) {
        typer.type(KeyTyper::letter(key % 26));
        typer.settle();
        tap.dispatch();
    }
    listenToEverything();
    ASSERT_EQ(heard.size(), 1000U);
    for (std::size_t event = 1; event < heard.size(); ++event) {
        EXPECT_GE(heard[event].nanos, heard[event - 1].nanos);
    }
}

TEST_F(X11KeyTapTest, hearsEverythingWhileAHotKeyIsHeld) {
    ASSERT_TRUE(tap.start());
    const X11HotKey hotKey;
    ASSERT_TRUE(hotKey.registered());
    typer.press(KEY_LEFTALT);
    typer.press(KEY_LEFTMETA);
    typer.press(KEY_K);
    typer.type(KEY_J);
    typer.release(KEY_K);
    typer.release(KEY_LEFTMETA);
    typer.release(KEY_LEFTALT);
    listenToEverything();
    EXPECT_THAT(codes(true), ElementsAre(58, 55, 40, 38));
    EXPECT_THAT(codes(false), ElementsAre(38, 40, 55, 58));
}

TEST_F(X11KeyTapTest, withoutAServerItNeedsARelaunch) {
    X11KeyTap nowhere(clock, ":63999");
    EXPECT_FALSE(nowhere.start());
    EXPECT_EQ(nowhere.refresh(), TapState::needsRelaunch);
    EXPECT_EQ(nowhere.fileDescriptor(), -1);
    nowhere.dispatch();
    nowhere.stop();
}

TEST_F(X11KeyTapTest, survivesTheDeathOfItsServer) {
    PrivateXServer server;
    X11KeyTap doomed(clock, server.display());
    ASSERT_EQ(doomed.refresh(), TapState::listening);
    server.kill();
    EXPECT_TRUE(waitFor([&] {
        doomed.dispatch();
        return doomed.fileDescriptor() < 0;
    }));
    EXPECT_EQ(doomed.refresh(), TapState::needsRelaunch);
    EXPECT_EQ(doomed.fileDescriptor(), -1);
}

TEST_F(X11KeyTapTest, onTheKeyThreadTheDeathOfItsServerCostsNothing) {
    /// Counts how often the thread is busy with it.
    class CountedTap final : public EventSource {
      public:
        explicit CountedTap(KeyTap& tap) : tap_(tap) {}
        int fileDescriptor() const override { return tap_.fileDescriptor(); }
        void dispatch() override {
            ++dispatches;
            tap_.dispatch();
        }
        std::atomic<int> dispatches{0};

      private:
        KeyTap& tap_;
    };
    PrivateXServer server;
    X11KeyTap doomed(clock, server.display());
    CountedTap counted(doomed);
    KeyThread keys;
    std::atomic<int> descriptor{0};
    std::atomic<int> rounds{0};
    const auto look = [&] {
        const int before = rounds;
        keys.post([&] {
            descriptor = doomed.fileDescriptor();
            ++rounds;
        });
        return waitFor([&] { return rounds > before; }) && descriptor < 0;
    };
    keys.post([&] {
        doomed.start();
        keys.watch(counted);
    });
    EXPECT_FALSE(look());
    server.kill();
    ASSERT_TRUE(waitFor(look));
    const int dispatches = counted.dispatches;
    for (int round = 0; round < 100; ++round) {
        look();
    }
    EXPECT_EQ(counted.dispatches, dispatches);
}

TEST_F(X11KeyTapTest, hearsEachKeyOnceWhileItForgets) {
    ASSERT_TRUE(tap.start());
    constexpr int presses = 2000;
    std::atomic<bool> typed{false};
    std::jthread hands([&] {
        KeyTyper other;
        for (int press = 0; press < presses; ++press) {
            other.type(KeyTyper::letter(press % 26));
            other.settle();
            // Nobody types a key twice in a millisecond, the unit of the server's times.
            const std::uint64_t millis = clock.nanos() / 1'000'000;
            while (press % 26 == 25 && clock.nanos() / 1'000'000 == millis) {
                std::this_thread::yield();
            }
        }
        typed = true;
    });
    while (!typed) {
        tap.forget();
        tap.dispatch();
    }
    hands.join();
    listenToEverything();
    EXPECT_EQ(codes(true).size(), std::size_t{presses});
    EXPECT_EQ(codes(false).size(), std::size_t{presses});
}

} // namespace
} // namespace vornic
