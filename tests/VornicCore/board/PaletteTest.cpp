#include "VornicCore/board/Palette.h"

#include "VornicCore/board/BuiltInBoards.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>
#include <vector>

namespace vornic {
namespace {

/// Of the boards that come with the program, and of others throughout all colours.
std::vector<std::string> colours() {
    std::vector<std::string> all{"", "#12345", "#GGGGGG", "red"};
    for (const auto& [id, recipe] : BuiltInBoards::recipes()) {
        all.push_back(recipe.color);
    }
    for (int red = 0; red < 256; red += 51) {
        for (int green = 0; green < 256; green += 51) {
            for (int blue = 0; blue < 256; blue += 51) {
                char text[8];
                std::snprintf(text, sizeof text, "#%02X%02X%02X", static_cast<unsigned>(red),
                              static_cast<unsigned>(green), static_cast<unsigned>(blue));
                all.emplace_back(text);
            }
        }
    }
    return all;
}

TEST(PaletteTest, readsColoursAndTakesGreyForWhatIsNone) {
    EXPECT_EQ(Rgb::of("#0aF3c9"), (Rgb{10, 243, 201}));
    EXPECT_EQ(Rgb::of("#0aF3c"), (Rgb{128, 128, 128}));
    EXPECT_EQ(Rgb::of("00aF3c9"), (Rgb{128, 128, 128}));
    EXPECT_EQ(Rgb::of("#0aF3cg"), (Rgb{128, 128, 128}));
}

TEST(PaletteTest, contrastIsThatOfTheStandard) {
    EXPECT_NEAR(contrast({0, 0, 0}, {255, 255, 255}), 21.0, 1e-9);
    EXPECT_NEAR(contrast({255, 255, 255}, {0, 0, 0}), 21.0, 1e-9);
    EXPECT_NEAR(contrast({0x77, 0x77, 0x77}, {255, 255, 255}), 4.48, 0.01);
}

TEST(PaletteTest, everyLegendIsReadOnItsCap) {
    for (const std::string& colour : colours()) {
        const Palette palette = Palette::of(colour);
        for (const CapColours& cap : {palette.caps, palette.modifiers, palette.accents}) {
            EXPECT_GE(contrast(cap.top, cap.legend), 4.5) << colour;
        }
    }
}

TEST(PaletteTest, theBoardsThatComeWithTheProgramDoNotLookLikeOneAnother) {
    std::set<std::pair<int, int>> looks;
    for (const auto& [id, recipe] : BuiltInBoards::recipes()) {
        const Palette palette = Palette::of(recipe.color);
        looks.insert(
            {palette.casing.red << 16 | palette.casing.green << 8 | palette.casing.blue,
             palette.caps.top.red << 16 | palette.caps.top.green << 8 | palette.caps.top.blue});
        // Drawn, that is, not made from the colour: its return key is not the colour mixed.
        EXPECT_NE(palette, Palette::of("#808080")) << id;
        EXPECT_GT(contrast(palette.casing, palette.caps.top), 1.15) << id;
    }
    EXPECT_EQ(looks.size(), BuiltInBoards::recipes().size());
}

TEST(PaletteTest, returnAndEscapeStandOut) {
    const Palette palette = Palette::of("#5E5CE6");
    EXPECT_EQ(palette.on(36), palette.accents);
    EXPECT_EQ(palette.on(53), palette.accents);
    EXPECT_EQ(palette.on(0), palette.caps);
    EXPECT_EQ(palette.on(49), palette.caps);
    EXPECT_EQ(palette.on(56), palette.modifiers);
    EXPECT_EQ(palette.on(123), palette.modifiers);
}

} // namespace
} // namespace vornic
