#include "Vornic/linux/hotkey/ReadHotKey.h"

#include <gtest/gtest.h>
#include <poll.h>

namespace vornic {
namespace {

constexpr std::uint32_t keyboard = 1;
constexpr std::int64_t keyK = 40;
constexpr std::int64_t command = 55;
constexpr std::int64_t option = 58;

struct ReadHotKeyTest : ::testing::Test {
    ReadHotKeyTest() {
        hotKey.onPress = [this] { ++presses; };
    }

    void type() {
        for (const bool down : {true, false}) {
            for (const std::int64_t key : {option, command, keyK}) {
                hotKey.keyMoved(keyboard, key, down);
            }
        }
    }

    bool wakes() const {
        pollfd wait{.fd = hotKey.fileDescriptor(), .events = POLLIN, .revents = 0};
        return ::poll(&wait, 1, 0) > 0;
    }

    ReadHotKey hotKey;
    int presses = 0;
};

TEST_F(ReadHotKeyTest, isRecognisedAmongTheKeys) {
    type();
    EXPECT_EQ(presses, 1);
    type();
    EXPECT_EQ(presses, 2);
}

TEST_F(ReadHotKeyTest, isRegisteredWhileAKeyboardIsReadOrSomebodyElseMatchesIt) {
    EXPECT_FALSE(hotKey.registered());
    hotKey.keyboardCame(keyboard, {});
    EXPECT_TRUE(hotKey.registered());
    hotKey.keyboardGone(keyboard);
    EXPECT_FALSE(hotKey.registered());
    hotKey.leaveToOthers(true);
    EXPECT_TRUE(hotKey.registered());
}

TEST_F(ReadHotKeyTest, keysHeldWhenAKeyboardIsOpenedCompleteNothingButCount) {
    hotKey.keyboardCame(keyboard, {option, command, keyK});
    EXPECT_EQ(presses, 0);
    hotKey.keyMoved(keyboard, keyK, false);
    hotKey.keyMoved(keyboard, keyK, true);
    EXPECT_EQ(presses, 1);
}

TEST_F(ReadHotKeyTest, aKeyboardUnpluggedWithTheModifiersDownLeavesNoneBehind) {
    hotKey.keyboardCame(keyboard, {});
    hotKey.keyMoved(keyboard, option, true);
    hotKey.keyMoved(keyboard, command, true);
    hotKey.keyboardGone(keyboard);
    hotKey.keyMoved(keyboard + 1, keyK, true);
    EXPECT_EQ(presses, 0);
}

TEST_F(ReadHotKeyTest, isLeftToThoseWhoMatchItThemselves) {
    hotKey.leaveToOthers(true);
    type();
    EXPECT_EQ(presses, 0);
    hotKey.leaveToOthers(false);
    type();
    EXPECT_EQ(presses, 1);
}

TEST_F(ReadHotKeyTest, everyPressMatchedElsewhereWakesTheKeyThread) {
    EXPECT_FALSE(wakes());
    hotKey.pressedElsewhere();
    hotKey.pressedElsewhere();
    EXPECT_TRUE(wakes());
    EXPECT_EQ(presses, 0) << "only the key thread may call";
    hotKey.dispatch();
    EXPECT_EQ(presses, 2);
    EXPECT_FALSE(wakes());
    hotKey.dispatch();
    EXPECT_EQ(presses, 2);
}

} // namespace
} // namespace vornic
