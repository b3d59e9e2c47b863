#include "Vornic/linux/keymap/XkbLegends.h"

#include "tests/support/Required.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

KeyLegends of(const std::string& layout) {
    return required(legendsOfLayout(layout));
}

TEST(XkbLegends, lettersStandWhereTheLayoutHasThem) {
    EXPECT_EQ(of("us").at(16), "Q");
    EXPECT_EQ(of("fr").at(16), "A");
    EXPECT_EQ(of("fr").at(2), "&");
    EXPECT_EQ(of("de").at(21), "Z");
    EXPECT_EQ(of("us(dvorak)").at(30), "A");
    EXPECT_EQ(of("us(dvorak)").at(31), "O");
    EXPECT_EQ(of("ru").at(16), "Й");
    EXPECT_EQ(of("jp").at(124), "¥");
}

TEST(XkbLegends, aUmlautIsACapitalAndSharpSIsNot) {
    EXPECT_EQ(of("de").at(39), "Ö");
    EXPECT_EQ(of("de").at(12), "ß");
    EXPECT_EQ(of("de").at(86), "<");
}

TEST(XkbLegends, aDeadKeyShowsItsMark) {
    EXPECT_EQ(of("de").at(41), "^");
    EXPECT_EQ(of("de").at(13), "´");
    EXPECT_EQ(of("us(intl)").at(40), "´");
}

TEST(XkbLegends, theRightAltIsNamedByWhatItDoes) {
    EXPECT_EQ(of("us").at(100), "Alt");
    EXPECT_EQ(of("de").at(100), "AltGr");
}

TEST(XkbLegends, theSpaceBarAndTheKeypadKeepTheirLabels) {
    for (const char* layout : {"us", "de", "fr"}) {
        EXPECT_FALSE(of(layout).contains(57)) << layout;
        EXPECT_FALSE(of(layout).contains(82)) << layout;
    }
}

TEST(XkbLegends, anUnknownLayoutHasNone) {
    EXPECT_FALSE(legendsOfLayout("nowhere"));
    EXPECT_FALSE(legendsOfLayout(""));
    EXPECT_FALSE(legendsOfLayout("de(nowhere)"));
    EXPECT_FALSE(legendsOfLayout("("));
}

} // namespace
} // namespace vornic
