#include "Vornic/app/FallbackTray.h"

#include "tests/support/FakeTray.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

class FallbackTrayTest : public ::testing::Test {
  protected:
    FakeTray first;
    FakeTray second;
    bool secondWanted = false;
};

TEST_F(FallbackTrayTest, wantsTheSecondOnlyWhileTheFirstDoesNotShow) {
    first.shown = false;
    second.shown = false;
    FallbackTray tray(first, second, [&](bool wanted) { secondWanted = wanted; });
    int changes = 0;
    tray.onVisibleChange = [&] { ++changes; };
    EXPECT_TRUE(secondWanted);
    EXPECT_FALSE(tray.visible());
    second.shown = true;
    second.onVisibleChange();
    EXPECT_TRUE(tray.visible());
    first.shown = true;
    first.onVisibleChange();
    EXPECT_FALSE(secondWanted);
    EXPECT_EQ(changes, 2);
}

TEST_F(FallbackTrayTest, bothShowTheSameAndAreClickedAlike) {
    FallbackTray tray(first, second, [](bool) {});
    int clicks = 0;
    tray.onActivate = [&](int x, int y) { clicks += x + y; };
    tray.show({.size = 1, .argb = {1, 2, 3, 4}}, "line");
    EXPECT_EQ(first.text, "line");
    EXPECT_EQ(second.now, first.now);
    first.onActivate(1, 2);
    second.onActivate(3, 4);
    EXPECT_EQ(clicks, 10);
}

} // namespace
} // namespace vornic
