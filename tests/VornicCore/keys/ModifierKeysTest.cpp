#include "VornicCore/keys/ModifierKeys.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(ModifierKeys, everyCapsLockChangeIsAPress) {
    EXPECT_EQ(ModifierKeys::isDown(57, 0), true);
    EXPECT_EQ(ModifierKeys::isDown(57, ~0ull), true);
}

TEST(ModifierKeys, fnFollowsItsFlagOnly) {
    EXPECT_EQ(ModifierKeys::isDown(63, 0x800000), true);
    EXPECT_EQ(ModifierKeys::isDown(63, ~0x800000ull), false);
}

TEST(ModifierKeys, aSideFollowsItsOwnBitOnly) {
    for (const auto& [code, bit] : ModifierKeys::deviceBits) {
        EXPECT_EQ(ModifierKeys::isDown(code, bit), true) << code;
        EXPECT_EQ(ModifierKeys::isDown(code, ~bit), false) << code;
    }
    EXPECT_EQ(ModifierKeys::isDown(56, 0x2), true);
    EXPECT_EQ(ModifierKeys::isDown(60, 0x2), false);
    EXPECT_EQ(ModifierKeys::isDown(62, 0x2000), true);
}

TEST(ModifierKeys, otherKeysAreNone) {
    EXPECT_FALSE(ModifierKeys::isDown(200, ~0ull).has_value());
    EXPECT_FALSE(ModifierKeys::isDown(48, ~0ull).has_value());
    EXPECT_FALSE(ModifierKeys::is(48));
    EXPECT_TRUE(ModifierKeys::is(57));
    EXPECT_TRUE(ModifierKeys::is(63));
    EXPECT_TRUE(ModifierKeys::is(54));
}

} // namespace
} // namespace vornic
