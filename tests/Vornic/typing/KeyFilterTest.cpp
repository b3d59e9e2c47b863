#include "Vornic/typing/KeyFilter.h"

#include "VornicCore/keys/ModifierKeys.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

// Native codes as the kernel numbers them, virtual codes beside them.
constexpr NativeKey keyA{1, 30};
constexpr NativeKey keyAElsewhere{2, 30};
constexpr NativeKey keyS{1, 31};
constexpr NativeKey capsKey{1, 58};
constexpr std::int64_t letterA = 0;
constexpr std::int64_t letterS = 1;
constexpr std::int64_t capsLock = 57;

TEST(KeyFilter, aHeldKeyGoesDownOnceAndUpOnce) {
    KeyFilter filter;
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_FALSE(filter.accepts(keyA, letterA, true));
    EXPECT_FALSE(filter.accepts(keyA, letterA, true));
    EXPECT_TRUE(filter.accepts(keyA, letterA, false));
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
}

TEST(KeyFilter, keysAreToldApart) {
    KeyFilter filter;
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_TRUE(filter.accepts(keyS, letterS, true));
    EXPECT_TRUE(filter.accepts(keyA, letterA, false));
    EXPECT_TRUE(filter.accepts(keyS, letterS, false));
}

TEST(KeyFilter, theSameKeyMayBeDownOnTwoKeyboards) {
    KeyFilter filter;
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_TRUE(filter.accepts(keyAElsewhere, letterA, true));
    EXPECT_TRUE(filter.accepts(keyA, letterA, false));
    EXPECT_FALSE(filter.accepts(keyAElsewhere, letterA, true));
    EXPECT_TRUE(filter.accepts(keyAElsewhere, letterA, false));
}

TEST(KeyFilter, aSecondReleaseIsDropped) {
    KeyFilter filter;
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_TRUE(filter.accepts(keyA, letterA, false));
    EXPECT_FALSE(filter.accepts(keyA, letterA, false));
}

TEST(KeyFilter, aReleaseWithoutAPressIsDropped) {
    KeyFilter filter;
    EXPECT_FALSE(filter.accepts(keyA, letterA, false));
}

TEST(KeyFilter, aKeyHeldFromBeforeIsHeardWhenItIsReleased) {
    KeyFilter filter;
    filter.heldBefore(keyA.code);
    EXPECT_FALSE(filter.accepts(keyA, letterA, true));
    EXPECT_TRUE(filter.accepts(keyA, letterA, false));
    EXPECT_FALSE(filter.accepts(keyA, letterA, false));
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_FALSE(filter.accepts(keyS, letterS, false));
}

TEST(KeyFilter, capsLockCountsOncePerPressAndNotOnItsRelease) {
    KeyFilter filter;
    EXPECT_TRUE(filter.accepts(capsKey, capsLock, true));
    EXPECT_FALSE(filter.accepts(capsKey, capsLock, true));
    EXPECT_FALSE(filter.accepts(capsKey, capsLock, false));
    EXPECT_TRUE(filter.accepts(capsKey, capsLock, true));
}

TEST(KeyFilter, modifiersGoDownAndUpAsTheirFlagsSay) {
    KeyFilter filter;
    std::uint32_t code = 100;
    for (const auto& [keyCode, bit] : ModifierKeys::deviceBits) {
        const NativeKey key{1, code++};
        for (const bool down : {true, false}) {
            EXPECT_TRUE(filter.accepts(key, keyCode, down));
            EXPECT_EQ(ModifierKeys::isDown(keyCode, down ? bit : 0), down);
        }
    }
}

TEST(KeyFilter, aResetForgetsHeldKeys) {
    KeyFilter filter;
    filter.heldBefore(keyS.code);
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    filter.reset();
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_FALSE(filter.accepts(keyS, letterS, false));
}

TEST(KeyFilter, aForgottenKeyboardHoldsNothingAndOthersHoldOn) {
    KeyFilter filter;
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_TRUE(filter.accepts(keyAElsewhere, letterA, true));
    filter.forgetKeyboard(keyA.keyboard);
    EXPECT_FALSE(filter.accepts(keyA, letterA, false));
    EXPECT_TRUE(filter.accepts(keyA, letterA, true));
    EXPECT_TRUE(filter.accepts(keyAElsewhere, letterA, false));
}

} // namespace
} // namespace vornic
