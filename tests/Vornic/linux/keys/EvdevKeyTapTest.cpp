#include "Vornic/linux/keys/EvdevKeyTap.h"

#include "tests/Vornic/linux/keys/FakeKeyboards.h"
#include "tests/support/ManualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <poll.h>

#include <ostream>
#include <set>
#include <utility>
#include <vector>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint64_t milli = 1'000'000;

struct HeardKey {
    std::int64_t keyCode;
    bool down;
    bool operator==(const HeardKey&) const = default;
};

void PrintTo(const HeardKey& key, std::ostream* out) {
    *out << key.keyCode << (key.down ? " down" : " up");
}

constexpr HeardKey downA{0, true};
constexpr HeardKey upA{0, false};
constexpr HeardKey downS{1, true};
constexpr HeardKey upS{1, false};
constexpr HeardKey downCapsLock{57, true};

/// Notes what it is told, and which keys are down by that.
class NotingWitness final : public KeyWitness {
  public:
    void keyboardCame(std::uint32_t keyboard, const std::vector<std::int64_t>& held) override {
        for (const std::int64_t keyCode : held) {
            down.insert({keyboard, keyCode});
        }
    }
    void keyMoved(std::uint32_t keyboard, std::int64_t keyCode, bool isDown) override {
        moved.push_back({keyCode, isDown});
        isDown ? static_cast<void>(down.insert({keyboard, keyCode}))
               : static_cast<void>(down.erase({keyboard, keyCode}));
    }
    void keyboardGone(std::uint32_t keyboard) override {
        std::erase_if(down, [&](const auto& key) { return key.first == keyboard; });
    }

    std::vector<HeardKey> moved;
    std::set<std::pair<std::uint32_t, std::int64_t>> down; // keyboard and key
};

class EvdevKeyTapTest : public ::testing::Test {
  protected:
    EvdevKeyTapTest() {
        clock.advance(1000.0);
        tap.onKey = [this](std::int64_t keyCode, bool down, std::uint64_t nanos) {
            heard.push_back({keyCode, down});
            times.push_back(nanos);
        };
    }

    /// A key event of now, a millisecond after the last.
    void say(FakeKeyboards::Keyboard& keyboard, std::uint32_t code, std::int32_t value) {
        clock.advance(0.001);
        FakeKeyboards::say(keyboard, {.nanos = clock.nanos(), .code = code, .value = value});
    }

    /// Whether a thread that waits for the tap would wake.
    bool wakes() const {
        pollfd wait{.fd = tap.fileDescriptor(), .events = POLLIN, .revents = 0};
        return ::poll(&wait, 1, 0) > 0;
    }

    ManualClock clock;
    FakeKeyboards keyboards;
    bool given = false;
    int asked = 0;
    NotingWitness witness;
    EvdevKeyTap tap{clock, keyboards,
                    [this] {
                        ++asked;
                        return given;
                    },
                    &witness};
    std::vector<HeardKey> heard;
    std::vector<std::uint64_t> times;
};

TEST_F(EvdevKeyTapTest, hearsAPressAndARelease) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    say(keyboard, KEY_A, 1);
    EXPECT_TRUE(wakes());
    say(keyboard, KEY_A, 0);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, upA));
    EXPECT_EQ(witness.moved, heard);
    EXPECT_FALSE(wakes());
}

TEST_F(EvdevKeyTapTest, hearsNothingBeforeItStartsAndAfterItStops) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    EXPECT_EQ(tap.fileDescriptor(), -1);
    say(keyboard, KEY_A, 1);
    tap.dispatch();
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(keyboard.open, 1);
    tap.stop();
    tap.stop();
    EXPECT_EQ(keyboard.open, 0);
    EXPECT_FALSE(keyboards.watching());
    EXPECT_EQ(tap.fileDescriptor(), -1);
    tap.dispatch();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(EvdevKeyTapTest, startingTwiceOpensOnce) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    const int descriptor = tap.fileDescriptor();
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(tap.refresh(), TapState::listening);
    EXPECT_EQ(tap.fileDescriptor(), descriptor);
    EXPECT_EQ(keyboard.open, 1);
    EXPECT_EQ(keyboards.listed(), 1);
}

TEST_F(EvdevKeyTapTest, aHeldKeyIsOnePressAndOneRelease) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    for (const std::int32_t value : {1, 2, 2, 2, 0}) {
        say(keyboard, KEY_A, value);
    }
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, upA));
}

TEST_F(EvdevKeyTapTest, capsLockIsOnePressAndNoRelease) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    for (const std::int32_t value : {1, 0, 1, 0}) {
        say(keyboard, KEY_CAPSLOCK, value);
    }
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downCapsLock, downCapsLock));
}

TEST_F(EvdevKeyTapTest, anIsoKeyboardsTwoExtraKeysAreTakenForWhatTheyAre) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    say(keyboard, KEY_102ND, 1);
    say(keyboard, KEY_GRAVE, 1);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(HeardKey{50, true}, HeardKey{10, true}));
}

TEST_F(EvdevKeyTapTest, buttonsOfAMouseAreNoKeys) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    say(keyboard, BTN_LEFT, 1);
    say(keyboard, BTN_LEFT, 0);
    tap.dispatch();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(EvdevKeyTapTest, theSameKeyOfTwoKeyboardsIsTwoKeys) {
    auto& left = keyboards.plug("/dev/input/event0");
    auto& right = keyboards.plug("/dev/input/event1");
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(tap.description(), "2 of 2 keyboards");
    say(left, KEY_A, 1);
    say(right, KEY_A, 1);
    say(left, KEY_A, 0);
    say(right, KEY_A, 0);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, downA, upA, upA));
}

TEST_F(EvdevKeyTapTest, keysOfSeveralKeyboardsComeInTheOrderOfTheirTimes) {
    auto& first = keyboards.plug("/dev/input/event0");
    auto& second = keyboards.plug("/dev/input/event1");
    ASSERT_TRUE(tap.start());
    const std::uint64_t now = clock.nanos();
    FakeKeyboards::say(first, {.nanos = now - 1 * milli, .code = KEY_S, .value = 1});
    FakeKeyboards::say(second, {.nanos = now - 2 * milli, .code = KEY_A, .value = 1});
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, downS));
    EXPECT_THAT(times, ElementsAre(now - 2 * milli, now - 1 * milli));
}

TEST_F(EvdevKeyTapTest, timesNeverRunBackwards) {
    auto& first = keyboards.plug("/dev/input/event0");
    auto& second = keyboards.plug("/dev/input/event1");
    ASSERT_TRUE(tap.start());
    const std::uint64_t now = clock.nanos();
    FakeKeyboards::say(first, {.nanos = now - 1 * milli, .code = KEY_S, .value = 1});
    tap.dispatch();
    FakeKeyboards::say(second, {.nanos = now - 2 * milli, .code = KEY_A, .value = 1});
    tap.dispatch();
    EXPECT_THAT(times, ElementsAre(now - 1 * milli, now - 1 * milli));
}

TEST_F(EvdevKeyTapTest, stampsOfAnotherClockCountAsNow) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    for (const std::uint64_t stamp : {std::uint64_t{1'800'000'000'000'000'000}, std::uint64_t{5}}) {
        FakeKeyboards::say(keyboard, {.nanos = stamp, .code = KEY_A, .value = 1});
        FakeKeyboards::say(keyboard, {.nanos = stamp, .code = KEY_A, .value = 0});
    }
    tap.dispatch();
    EXPECT_THAT(times, ElementsAre(clock.nanos(), clock.nanos(), clock.nanos(), clock.nanos()));
}

TEST_F(EvdevKeyTapTest, hearsAKeyboardPluggedInLater) {
    ASSERT_EQ(tap.refresh(), TapState::needsPermission);
    tap.dispatch();
    auto& keyboard = keyboards.plug("/dev/input/event4");
    EXPECT_TRUE(wakes());
    tap.dispatch();
    EXPECT_FALSE(wakes());
    EXPECT_EQ(tap.refresh(), TapState::listening);
    say(keyboard, KEY_A, 1);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA));
}

TEST_F(EvdevKeyTapTest, aKeyboardUnpluggedWithAKeyDownLeavesNothingBehind) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    say(keyboard, KEY_A, 1);
    tap.dispatch();
    keyboards.unplug(keyboard);
    tap.dispatch();
    EXPECT_EQ(keyboard.open, 0);
    EXPECT_FALSE(wakes());
    EXPECT_EQ(tap.description(), "0 of 0 keyboards");
    auto& again = keyboards.plug("/dev/input/event0");
    tap.dispatch();
    say(again, KEY_A, 1);
    say(again, KEY_A, 0);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, downA, upA));
}

TEST_F(EvdevKeyTapTest, aKeyboardThatClosesTakesItsKeysAlong) {
    auto& one = keyboards.plug("/dev/input/event0");
    auto& other = keyboards.plug("/dev/input/event1");
    one.down = {KEY_LEFTALT};
    ASSERT_TRUE(tap.start());
    say(one, KEY_LEFTMETA, 1);
    say(other, KEY_LEFTSHIFT, 1);
    tap.dispatch();
    EXPECT_EQ(witness.down.size(), 3U);
    keyboards.unplug(one);
    tap.dispatch();
    ASSERT_EQ(witness.down.size(), 1U);
    EXPECT_EQ(witness.down.begin()->second, 56);
    // Somebody else sits at the computer now.
    other.readable = false;
    tap.refresh();
    EXPECT_THAT(witness.down, IsEmpty());
}

TEST_F(EvdevKeyTapTest, stoppingTakesAllKeysAlong) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    say(keyboard, KEY_LEFTALT, 1);
    tap.dispatch();
    ASSERT_EQ(witness.down.size(), 1U);
    tap.stop();
    EXPECT_THAT(witness.down, IsEmpty());
}

TEST_F(EvdevKeyTapTest, aKeyboardThatDiesBeforeItsRemovalIsToldDoesNotKeepTheThreadBusy) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    ASSERT_TRUE(tap.start());
    tap.dispatch();
    keyboard.readable = false;
    keyboard.gone = true;
    keyboard.flag.raise();
    EXPECT_TRUE(wakes());
    tap.dispatch();
    EXPECT_FALSE(wakes());
    EXPECT_EQ(keyboard.open, 0);
}

TEST_F(EvdevKeyTapTest, aKeyHeldWhileItStartsIsHeardWhenItIsReleased) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    auto& other = keyboards.plug("/dev/input/event1");
    keyboard.down = {KEY_A};
    ASSERT_TRUE(tap.start());
    say(other, KEY_A, 1);
    say(keyboard, KEY_A, 0);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, upA));
}

TEST_F(EvdevKeyTapTest, whatAProgramRepeatsSoundsOnce) {
    auto& real = keyboards.plug("/dev/input/event0");
    auto& remapper = keyboards.plug("/dev/input/event9", true);
    ASSERT_TRUE(tap.start());
    const std::uint64_t now = clock.nanos();
    FakeKeyboards::say(real, {.nanos = now - 9 * milli, .code = KEY_A, .value = 1});
    FakeKeyboards::say(real, {.nanos = now - 5 * milli, .code = KEY_A, .value = 0});
    FakeKeyboards::say(remapper, {.nanos = now - 8 * milli, .code = KEY_A, .value = 1});
    FakeKeyboards::say(remapper, {.nanos = now - 4 * milli, .code = KEY_A, .value = 0});
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, upA));
    EXPECT_THAT(times, ElementsAre(now - 9 * milli, now - 5 * milli));
}

TEST_F(EvdevKeyTapTest, aHeldKeyIsNoOriginalForever) {
    auto& real = keyboards.plug("/dev/input/event0");
    auto& remapper = keyboards.plug("/dev/input/event9", true);
    ASSERT_TRUE(tap.start());
    say(real, KEY_A, 1);
    clock.advance(0.5);
    say(real, KEY_A, 2);
    say(remapper, KEY_A, 1);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, downA));
}

TEST_F(EvdevKeyTapTest, whatAProgramSaysAloneIsHeard) {
    keyboards.plug("/dev/input/event0");
    auto& remapper = keyboards.plug("/dev/input/event9", true);
    ASSERT_TRUE(tap.start());
    say(remapper, KEY_A, 1);
    say(remapper, KEY_A, 0);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA, upA));
}

TEST_F(EvdevKeyTapTest, withoutAReadableKeyboardAndAGrantItNeedsPermission) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    keyboard.readable = false;
    EXPECT_FALSE(tap.start());
    EXPECT_FALSE(keyboards.watching());
    EXPECT_EQ(tap.refresh(), TapState::needsPermission);
    EXPECT_EQ(tap.description(), "0 of 1 keyboard");
}

TEST_F(EvdevKeyTapTest, aGrantThatDoesNotReachThisProcessNeedsARelaunch) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    keyboard.readable = false;
    given = true;
    EXPECT_FALSE(tap.start());
    EXPECT_EQ(tap.refresh(), TapState::needsRelaunch);
}

TEST_F(EvdevKeyTapTest, goesThroughItsStatesAsRightsComeAndGo) {
    auto& keyboard = keyboards.plug("/dev/input/event0");
    keyboard.readable = false;
    EXPECT_EQ(tap.refresh(), TapState::needsPermission);
    given = true;
    EXPECT_EQ(tap.refresh(), TapState::needsRelaunch);
    keyboard.readable = true;
    EXPECT_EQ(tap.refresh(), TapState::listening);
    say(keyboard, KEY_A, 1);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA));
    // What is open stays readable; it has to be let go of.
    given = false;
    keyboard.readable = false;
    EXPECT_EQ(tap.refresh(), TapState::needsPermission);
    EXPECT_EQ(keyboard.open, 0);
    say(keyboard, KEY_S, 1);
    tap.dispatch();
    EXPECT_THAT(heard, ElementsAre(downA));
}

TEST_F(EvdevKeyTapTest, oneReadableKeyboardIsEnoughToListen) {
    keyboards.plug("/dev/input/event0").readable = false;
    keyboards.plug("/dev/input/event1");
    EXPECT_EQ(tap.refresh(), TapState::listening);
    EXPECT_EQ(tap.description(), "1 of 2 keyboards");
    EXPECT_EQ(asked, 0) << "the user database need not be asked while keys are heard";
}

TEST_F(EvdevKeyTapTest, withAGrantAndNoKeyboardItListensForOne) {
    given = true;
    EXPECT_TRUE(tap.start());
    EXPECT_TRUE(keyboards.watching());
}

} // namespace
} // namespace vornic
