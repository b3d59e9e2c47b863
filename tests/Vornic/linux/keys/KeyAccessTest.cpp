#include "Vornic/linux/keys/KeyAccess.h"

#include "Vornic/linux/permission/KeyGrant.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace vornic {
namespace {

TEST(KeyAccess, everyCombinationHasItsState) {
    const auto state = [](std::size_t present, std::size_t open, bool given) {
        return tapStateOf({.present = present, .open = open}, [given] { return given; });
    };
    EXPECT_EQ(state(2, 2, false), TapState::listening);
    EXPECT_EQ(state(2, 1, false), TapState::listening);
    EXPECT_EQ(state(2, 1, true), TapState::listening);
    EXPECT_EQ(state(2, 0, false), TapState::needsPermission);
    EXPECT_EQ(state(2, 0, true), TapState::needsRelaunch);
    EXPECT_EQ(state(0, 0, false), TapState::needsPermission);
    EXPECT_EQ(state(0, 0, true), TapState::listening);
}

TEST(KeyboardKind, onlyDevicesOfProgramsAreVirtual) {
    EXPECT_TRUE(isMadeByAProgram("/sys/devices/virtual/input/input20/event9"));
    EXPECT_FALSE(isMadeByAProgram("/sys/devices/platform/i8042/serio0/input/input3/event3"));
    // A keyboard on Bluetooth's low-energy radio.
    EXPECT_FALSE(isMadeByAProgram(
        "/sys/devices/virtual/misc/uhid/0005:046D:B342.0007/input/input30/event12"));
}

TEST(KeyboardKind, keysAreToldFromButtons) {
    for (const int key :
         {KEY_ESC, KEY_A, KEY_102ND, KEY_MUTE, KEY_MICMUTE, KEY_OK, KEY_FN, KEY_MAX}) {
        EXPECT_TRUE(isKeyOfAKeyboard(static_cast<std::uint32_t>(key))) << key;
    }
    for (const int button :
         {KEY_RESERVED, BTN_MISC, BTN_LEFT, BTN_TOUCH, BTN_GEAR_UP, KEY_OK - 1, BTN_DPAD_UP,
          BTN_DPAD_RIGHT, BTN_TRIGGER_HAPPY1, BTN_TRIGGER_HAPPY40}) {
        EXPECT_FALSE(isKeyOfAKeyboard(static_cast<std::uint32_t>(button))) << button;
    }
}

TEST(KeyGrant, theUserDatabaseKnowsItsGroups) {
    // Every system has these.
    EXPECT_TRUE(KeyGrant::isMember(0, "root"));
    EXPECT_FALSE(KeyGrant::isMember(65534, "root"));
    EXPECT_FALSE(KeyGrant::isMember(0, "no-such-group"));
    EXPECT_FALSE(KeyGrant::isMember(4'000'000'000U, "root"));
}

} // namespace
} // namespace vornic
