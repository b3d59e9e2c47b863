#include "Vornic/keystroke/KeyFilter.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

constexpr std::int64_t letterA = 0;
constexpr std::int64_t capsLock = 57;
constexpr std::int64_t leftShift = 56;

using Accepted = std::optional<AcceptedKey>;

TEST(KeyFilter, aHeldKeyGoesDownOnceAndUpOnce) {
    KeyFilter filter;
    EXPECT_EQ(filter.accept(letterA, true), Accepted({letterA, true}));
    EXPECT_EQ(filter.accept(letterA, true), Accepted());
    EXPECT_EQ(filter.accept(letterA, true), Accepted());
    EXPECT_EQ(filter.accept(letterA, false), Accepted({letterA, false}));
    EXPECT_EQ(filter.accept(letterA, true), Accepted({letterA, true}));
}

TEST(KeyFilter, keysAreToldApart) {
    KeyFilter filter;
    EXPECT_TRUE(filter.accept(letterA, true));
    EXPECT_TRUE(filter.accept(leftShift, true));
    EXPECT_FALSE(filter.accept(letterA, true));
    EXPECT_EQ(filter.accept(leftShift, false), Accepted({leftShift, false}));
}

TEST(KeyFilter, capsLockCountsOncePerPressAndNotOnItsRelease) {
    KeyFilter filter;
    EXPECT_EQ(filter.accept(capsLock, true), Accepted({capsLock, true}));
    EXPECT_EQ(filter.accept(capsLock, true), Accepted());
    EXPECT_EQ(filter.accept(capsLock, false), Accepted());
    EXPECT_EQ(filter.accept(capsLock, true), Accepted({capsLock, true}));
}

TEST(KeyFilter, theReleaseOfAKeyHeldFromBeforePasses) {
    KeyFilter filter;
    EXPECT_EQ(filter.accept(letterA, false), Accepted({letterA, false}));
}

TEST(KeyFilter, aResetForgetsHeldKeys) {
    KeyFilter filter;
    filter.accept(letterA, true);
    filter.reset();
    EXPECT_TRUE(filter.accept(letterA, true));
}

} // namespace
} // namespace vornic
