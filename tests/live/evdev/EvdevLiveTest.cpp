// Keyboards as the kernel and libudev tell of them.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/keys/EvdevKeyTap.h"
#include "Vornic/linux/keys/UdevInputDevices.h"
#include "tests/live/evdev/MockKeyboards.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <unistd.h>

#include <vector>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A tap that reads emulated keyboards on the test's own thread.
class EvdevLiveTest : public ::testing::Test {
  protected:
    EvdevLiveTest() {
        tap.onKey = [this](std::int64_t keyCode, bool down, std::uint64_t nanos) {
            (down ? pressed : released).push_back(keyCode);
            times.push_back(nanos);
        };
    }

    void type(int keyboard, std::uint16_t code) {
        keyboards.send(keyboard, code, 1, clock.nanos());
        keyboards.send(keyboard, code, 0, clock.nanos());
    }

    /// Delivers events until a key is heard that `keyboard` types last.
    void listenToEverything(int keyboard) {
        constexpr std::int64_t f10 = 109;
        type(keyboard, KEY_F10);
        ASSERT_TRUE(waitFor([&] {
            tap.dispatch();
            return !released.empty() && released.back() == f10;
        }));
        pressed.pop_back();
        released.pop_back();
        times.resize(times.size() - 2);
    }

    bool describes(const std::string& description) {
        return waitFor([&] {
            tap.dispatch();
            return tap.description() == description;
        });
    }

    MockKeyboards keyboards;
    MonotonicClock clock;
    UdevInputDevices devices;
    EvdevKeyTap tap{clock, devices, [] { return true; }};
    std::vector<std::int64_t> pressed;
    std::vector<std::int64_t> released;
    std::vector<std::uint64_t> times;
};

TEST_F(EvdevLiveTest, hearsWhatAnOverrunHasChangedAndNothingThatIsDoubtful) {
    keyboards.plug(5);
    ASSERT_TRUE(tap.start());
    keyboards.send(5, KEY_A, 1, clock.nanos());
    keyboards.overrun(5, KEY_B, clock.nanos());
    listenToEverything(5);
    EXPECT_THAT(pressed, ElementsAre(0)) << "A, and no B";
    EXPECT_THAT(released, ElementsAre(0)) << "for it is up by now";
}

TEST_F(EvdevLiveTest, hearsKeysWithTheKernelsTimeStamps) {
    keyboards.plug(5);
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(tap.description(), "1 of 1 keyboard");
    const std::uint64_t before = clock.nanos() - 50'000'000;
    keyboards.send(5, KEY_A, 1, before);
    keyboards.send(5, KEY_A, 2, before + 10'000'000);
    keyboards.send(5, KEY_A, 0, before + 20'000'000);
    listenToEverything(5);
    EXPECT_THAT(pressed, ElementsAre(0));
    EXPECT_THAT(released, ElementsAre(0));
    EXPECT_THAT(times, ElementsAre(before / 1000 * 1000, (before + 20'000'000) / 1000 * 1000));
}

TEST_F(EvdevLiveTest, hearsTwentySixKeysTypedAtOnce) {
    keyboards.plug(5);
    ASSERT_TRUE(tap.start());
    for (std::uint16_t code = KEY_1; code < KEY_1 + 26; ++code) {
        type(5, code);
    }
    listenToEverything(5);
    EXPECT_EQ(pressed.size(), 26U);
    EXPECT_EQ(released, pressed);
}

TEST_F(EvdevLiveTest, keyboardsComeAndGo) {
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(tap.description(), "0 of 0 keyboards");
    keyboards.plug(5);
    ASSERT_TRUE(describes("1 of 1 keyboard"));
    keyboards.plug(6);
    ASSERT_TRUE(describes("2 of 2 keyboards"));
    type(5, KEY_A);
    listenToEverything(5);
    type(6, KEY_S);
    listenToEverything(6);
    EXPECT_THAT(pressed, ElementsAre(0, 1));
    keyboards.unplug(5);
    ASSERT_TRUE(describes("1 of 1 keyboard"));
    type(6, KEY_A);
    listenToEverything(6);
    EXPECT_THAT(pressed, ElementsAre(0, 1, 0));
}

TEST_F(EvdevLiveTest, whatARemapperRepeatsSoundsOnce) {
    keyboards.plug(5);
    keyboards.plug(9, true);
    ASSERT_TRUE(tap.start());
    EXPECT_EQ(tap.description(), "2 of 2 keyboards");
    const std::uint64_t now = clock.nanos() - 20'000'000;
    keyboards.send(5, KEY_A, 1, now);
    keyboards.send(9, KEY_A, 1, now + 1'000'000);
    keyboards.send(5, KEY_A, 0, now + 2'000'000);
    keyboards.send(9, KEY_A, 0, now + 3'000'000);
    type(9, KEY_S);
    listenToEverything(9);
    EXPECT_THAT(pressed, ElementsAre(0, 1));
    EXPECT_THAT(released, ElementsAre(0, 1));
}

/// The state as a user without rights finds it: root reads everything.
TapState stateForNobody(EvdevKeyTap& tap) {
    constexpr uid_t nobody = 65534;
    const uid_t self = geteuid();
    const uid_t other = self == 0 ? nobody : self;
    EXPECT_EQ(setresuid(other, other, self), 0);
    const TapState state = tap.refresh();
    EXPECT_EQ(setresuid(self, self, self), 0);
    return state;
}

TEST_F(EvdevLiveTest, theStateFollowsTheRightToReadKeyboards) {
    bool given = false;
    EvdevKeyTap own{clock, devices, [&given] { return given; }};
    keyboards.plug(5);
    keyboards.setReadable(5, false);
    EXPECT_EQ(stateForNobody(own), TapState::needsPermission);
    given = true;
    EXPECT_EQ(stateForNobody(own), TapState::needsRelaunch);
    keyboards.setReadable(5, true);
    EXPECT_EQ(stateForNobody(own), TapState::listening);
    // Taken back while it listens: an open keyboard would stay readable.
    given = false;
    keyboards.setReadable(5, false);
    EXPECT_EQ(stateForNobody(own), TapState::needsPermission);
    EXPECT_EQ(own.description(), "0 of 1 keyboard");
}

TEST_F(EvdevLiveTest, hearsNothingOnceStopped) {
    keyboards.plug(5);
    ASSERT_TRUE(tap.start());
    tap.stop();
    type(5, KEY_A);
    tap.dispatch();
    EXPECT_THAT(pressed, IsEmpty());
}

} // namespace
} // namespace vornic
