#include "tests/VornicCore/keys/DrawnLayouts.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace vornic {
namespace {

TEST(MechanicalLayouts, theMainBlockOfAMechanicalBoardHasTheUsualWidths) {
    const std::map<std::int64_t, double> widths{{51, 2},    {48, 1.5},  {42, 1.5},  {57, 1.75},
                                                {36, 2.25}, {56, 2.25}, {60, 2.75}, {59, 1.25},
                                                {58, 1.25}, {55, 1.25}, {49, 6.25}};
    for (const LayoutID id : mechanical) {
        for (const LayoutKey& each : layout(id).keys) {
            const auto wide = widths.find(each.code.value());
            if (wide != widths.end()) {
                EXPECT_EQ(each.w, wide->second) << rawString(id) << each.label;
            } else if (each.code != 82) {
                EXPECT_EQ(each.w, 1) << rawString(id) << each.label;
            }
            EXPECT_EQ(each.h, each.code == 76 ? 2 : 1) << rawString(id) << each.label;
        }
    }
}

TEST(MechanicalLayouts, everyRowOfTheMainBlockIsFifteenWide) {
    for (const LayoutID id : mechanical) {
        const double top = key(id, 50).y;
        for (const double y : {top, top + 1, top + 2, top + 3}) {
            EXPECT_EQ(rowEnd(id, y, 15), 15) << rawString(id) << y;
        }
    }
    // The four keys right of the space bar are 1 wide: there the row ends earlier, and the small
    // boards go on with the left arrow.
    for (const LayoutID id : mechanical) {
        EXPECT_EQ(key(id, 54).x, 10) << rawString(id);
        EXPECT_EQ(key(id, 62).x + key(id, 62).w, 14) << rawString(id);
    }
    for (const LayoutID id : {LayoutID::sixtyFive, LayoutID::seventyFive}) {
        EXPECT_EQ(key(id, 62).x + key(id, 62).w, key(id, 123).x) << rawString(id);
        EXPECT_EQ(key(id, 123).x + 1, 15) << rawString(id);
    }
}

TEST(MechanicalLayouts, theFunctionRowStandsApart) {
    EXPECT_EQ(layout(LayoutID::sixty).find(122), nullptr);
    EXPECT_EQ(layout(LayoutID::sixtyFive).find(122), nullptr);
    for (const LayoutID id : {LayoutID::seventyFive, LayoutID::tkl, LayoutID::full}) {
        EXPECT_EQ(key(id, 53).y, 0);
        EXPECT_EQ(key(id, 53).x, 0);
        EXPECT_EQ(key(id, 50).y, 1.25);
        EXPECT_EQ(key(id, 111).x + 1, 15);
        for (const KeyName& name : KeyboardLayout::fKeys) {
            EXPECT_EQ(key(id, name.code).label, name.label);
            EXPECT_EQ(key(id, name.code).y, 0);
        }
    }
}

TEST(MechanicalLayouts, everyFunctionKeySaysItsNumber) {
    constexpr std::array codes{122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111};
    ASSERT_EQ(KeyboardLayout::fKeys.size(), codes.size());
    for (std::size_t i = 0; i < codes.size(); ++i) {
        EXPECT_EQ(KeyboardLayout::fKeys.at(i).code, codes.at(i));
        EXPECT_EQ(KeyboardLayout::fKeys.at(i).label, "F" + std::to_string(i + 1));
    }
}

TEST(MechanicalLayouts, arrowsFormAnInvertedT) {
    EXPECT_EQ(layout(LayoutID::sixty).find(123), nullptr);
    for (const LayoutID id :
         {LayoutID::sixtyFive, LayoutID::seventyFive, LayoutID::tkl, LayoutID::full}) {
        const double left = id == LayoutID::tkl || id == LayoutID::full ? 15.25 : 14;
        const double y = key(id, 49).y;
        EXPECT_EQ(key(id, 123), (LayoutKey{123, "←", left, y, 1, 1})) << rawString(id);
        EXPECT_EQ(key(id, 125), (LayoutKey{125, "↓", left + 1, y, 1, 1})) << rawString(id);
        EXPECT_EQ(key(id, 124), (LayoutKey{124, "→", left + 2, y, 1, 1})) << rawString(id);
        EXPECT_EQ(key(id, 126), (LayoutKey{126, "↑", left + 1, y - 1, 1, 1})) << rawString(id);
    }
}

TEST(MechanicalLayouts, theBigBoardsHaveANavigationBlock) {
    for (const LayoutID id : {LayoutID::tkl, LayoutID::full}) {
        const double y = key(id, 50).y;
        EXPECT_TRUE(has(id, {114, "help", 15.25, y, 1, 1}));
        EXPECT_TRUE(has(id, {115, "home", 16.25, y, 1, 1}));
        EXPECT_TRUE(has(id, {116, "pg up", 17.25, y, 1, 1}));
        EXPECT_TRUE(has(id, {117, "del", 15.25, y + 1, 1, 1}));
        EXPECT_TRUE(has(id, {119, "end", 16.25, y + 1, 1, 1}));
        EXPECT_TRUE(has(id, {121, "pg dn", 17.25, y + 1, 1, 1}));
    }
}

TEST(MechanicalLayouts, theFullBoardHasMoreFunctionKeysAndAKeypad) {
    const double y = key(LayoutID::full, 50).y;
    const std::vector<std::vector<LayoutKey>> rows{
        {{105, "F13", 15.25, 0, 1, 1}, {107, "F14", 16.25, 0, 1, 1}, {113, "F15", 17.25, 0, 1, 1}},
        {{71, "clear", 18.5, y, 1, 1},
         {81, "=", 19.5, y, 1, 1},
         {75, "/", 20.5, y, 1, 1},
         {67, "*", 21.5, y, 1, 1}},
        {{89, "7", 18.5, y + 1, 1, 1},
         {91, "8", 19.5, y + 1, 1, 1},
         {92, "9", 20.5, y + 1, 1, 1},
         {78, "-", 21.5, y + 1, 1, 1}},
        {{86, "4", 18.5, y + 2, 1, 1},
         {87, "5", 19.5, y + 2, 1, 1},
         {88, "6", 20.5, y + 2, 1, 1},
         {69, "+", 21.5, y + 2, 1, 1}},
        {{83, "1", 18.5, y + 3, 1, 1},
         {84, "2", 19.5, y + 3, 1, 1},
         {85, "3", 20.5, y + 3, 1, 1},
         {76, "enter", 21.5, y + 3, 1, 2}},
        {{82, "0", 18.5, y + 4, 2, 1}, {65, ".", 20.5, y + 4, 1, 1}}};
    for (const std::vector<LayoutKey>& row : rows) {
        for (const LayoutKey& each : row) {
            EXPECT_TRUE(has(LayoutID::full, each));
            EXPECT_EQ(layout(LayoutID::tkl).find(*each.code), nullptr);
        }
    }
}

TEST(MechanicalLayouts, aLargerBoardHasEveryKeyOfASmallerOne) {
    for (std::size_t i = 0; i + 1 < mechanical.size(); ++i) {
        for (const LayoutKey& each : layout(mechanical[i]).keys) {
            EXPECT_NE(layout(mechanical[i + 1]).find(*each.code), nullptr)
                << rawString(mechanical[i + 1]) << each.label;
        }
    }
}

} // namespace
} // namespace vornic
