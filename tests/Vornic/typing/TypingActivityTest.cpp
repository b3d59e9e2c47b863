#include "Vornic/typing/TypingActivity.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(TypingActivity, nobodyTypesAtFirst) {
    TypingActivity activity;
    EXPECT_FALSE(activity.refresh(10.0));
    EXPECT_FALSE(activity.typing());
    EXPECT_FALSE(activity.lastCode().has_value());
}

TEST(TypingActivity, aKeyCountsForAQuarterOfASecond) {
    TypingActivity activity;
    activity.keyDown(49, 10.0);
    EXPECT_TRUE(activity.refresh(10.2));
    EXPECT_TRUE(activity.typing());
    EXPECT_FALSE(activity.refresh(10.24));
    EXPECT_TRUE(activity.refresh(10.25));
    EXPECT_FALSE(activity.typing());
    EXPECT_EQ(activity.lastCode(), 49);
    EXPECT_EQ(activity.lastKey(), 10.0);
}

TEST(TypingActivity, forgetsTheLastKeyWhenNobodyTypesAndItIsUp) {
    TypingActivity activity;
    activity.keyDown(49, 10.0);
    activity.keyUp(49);
    activity.refresh(10.2);
    EXPECT_EQ(activity.lastCode(), 49);
    activity.refresh(10.25);
    EXPECT_EQ(activity.lastCode(), std::nullopt);
    EXPECT_EQ(activity.lastKey(), 10.0);
    activity.keyDown(49, 11.0);
    activity.refresh(12.0);
    EXPECT_EQ(activity.lastCode(), 49) << "a key that is held is lit";
    activity.keyUp(49);
    activity.refresh(12.2);
    EXPECT_EQ(activity.lastCode(), std::nullopt);
}

TEST(TypingActivity, knowsWhichKeysAreDown) {
    TypingActivity activity;
    activity.keyDown(49, 10.0);
    activity.keyDown(0, 10.1);
    EXPECT_TRUE(activity.pressed().contains(49));
    EXPECT_TRUE(activity.pressed().contains(0));
    activity.keyUp(49);
    activity.keyUp(49);
    EXPECT_FALSE(activity.pressed().contains(49));
    EXPECT_TRUE(activity.pressed().contains(0));
}

TEST(TypingActivity, aKeyWhoseWayUpIsNeverHeardIsLetGoInTheEnd) {
    TypingActivity activity;
    activity.keyDown(49, 10.0);
    activity.refresh(10.1);
    activity.refresh(14.9);
    EXPECT_TRUE(activity.pressed().contains(49));
    EXPECT_TRUE(activity.refresh(15.0)) << "a view has to be told";
    EXPECT_TRUE(activity.pressed().empty());
}

} // namespace
} // namespace vornic
