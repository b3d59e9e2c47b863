#include "VornicCore/keys/KeyLegends.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

std::string legend(LayoutID id, std::int64_t code, const KeyLegends& legends) {
    const KeyboardLayout& keyboard = layout(id);
    return legendOf(*keyboard.find(code), keyboard, legends);
}

TEST(KeyLegends, withoutLegendsTheLayoutsLabelsStand) {
    for (const LayoutID id : allCases<LayoutID>()) {
        for (const LayoutKey& key : layout(id).keys) {
            EXPECT_EQ(legendOf(key, layout(id), {}), key.label);
        }
    }
}

TEST(KeyLegends, modifiersHaveThePlatformsNames) {
    const KeyLegends& pc = pcLegends();
    EXPECT_EQ(legend(LayoutID::full, 59, pc), "Ctrl");
    EXPECT_EQ(legend(LayoutID::full, 58, pc), "Alt");
    EXPECT_EQ(legend(LayoutID::full, 55, pc), "Super");
    EXPECT_EQ(legend(LayoutID::macANSI, 36, pc), "Enter");
    EXPECT_EQ(legend(LayoutID::full, 51, pc), "Backspace");
    EXPECT_EQ(legend(LayoutID::full, 114, pc), "Ins");
    // What is on every keyboard alike keeps its label.
    EXPECT_EQ(legend(LayoutID::full, 122, pc), "F1");
    EXPECT_EQ(legend(LayoutID::full, 126, pc), "↑");
    EXPECT_EQ(legend(LayoutID::full, 49, pc), "");
}

TEST(KeyLegends, aKeyIsFoundByItsPlace) {
    const KeyLegends azerty{{16, "A"}, {30, "Q"}};
    EXPECT_EQ(legend(LayoutID::tkl, 12, azerty), "A");
    EXPECT_EQ(legend(LayoutID::tkl, 0, azerty), "Q");
}

TEST(KeyLegends, onAnIsoLayoutTheKeysBesideOneAndShiftKeepTheirPlaces) {
    const KeyLegends german{{41, "^"}, {86, "<"}};
    EXPECT_EQ(legend(LayoutID::macANSI, 50, german), "^");
    EXPECT_EQ(legend(LayoutID::macISO, 10, german), "^");
    EXPECT_EQ(legend(LayoutID::macISO, 50, german), "<");
}

TEST(KeyLegends, aKeyThatSendsNothingKeepsItsLabel) {
    LayoutKey power;
    power.label = "power";
    EXPECT_EQ(legendOf(power, layout(LayoutID::macANSI), {{1, "Esc"}}), "power");
}

} // namespace
} // namespace vornic
