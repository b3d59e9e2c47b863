#include "Vornic/commands/TypedText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace vornic {
namespace {

using ::testing::ElementsAre;

std::vector<std::int64_t> presses(const TypedText& typed) {
    std::vector<std::int64_t> codes;
    for (const KeyEvent& event : typed.events) {
        if (event.down) {
            codes.push_back(event.keyCode);
        }
    }
    return codes;
}

TEST(TypedText, typesLettersDigitsAndPunctuationOfAUsKeyboard) {
    EXPECT_THAT(presses(typeText("az 1-;\n\t`\\", 1)),
                ElementsAre(0, 6, 49, 18, 27, 41, 36, 48, 50, 42));
}

TEST(TypedText, holdsShiftWithTheOtherHand) {
    EXPECT_THAT(presses(typeText("A", 1)), ElementsAre(60, 0));
    EXPECT_THAT(presses(typeText("L", 1)), ElementsAre(56, 37));
    EXPECT_THAT(presses(typeText("?", 1)), ElementsAre(56, 44));
}

TEST(TypedText, leavesOutAndCountsWhatAUsKeyboardCannotType) {
    const TypedText typed = typeText("na\xC3\xAFve \xE2\x82\xAC", 1);
    EXPECT_THAT(presses(typed), ElementsAre(45, 0, 9, 14, 49));
    EXPECT_EQ(typed.untypable, 2);
}

TEST(TypedText, equalSeedsTypeEqually) {
    EXPECT_EQ(typeText("The same hand.", 7).events, typeText("The same hand.", 7).events);
    EXPECT_NE(typeText("The same hand.", 7).events, typeText("The same hand.", 8).events);
}

TEST(TypedText, everyKeyGoesUpBeforeItGoesDownAgain) {
    const TypedText typed = typeText("AAAA ssss  LLLL mississippi AlAlAl", 3);
    std::map<std::int64_t, bool> down;
    double last = 0.0;
    for (const KeyEvent& event : typed.events) {
        EXPECT_NE(down[event.keyCode], event.down) << event.keyCode << " at " << event.millis;
        down[event.keyCode] = event.down;
        EXPECT_GE(event.millis, last);
        last = event.millis;
    }
    for (const auto& [keyCode, isDown] : down) {
        EXPECT_FALSE(isDown) << keyCode;
    }
}

TEST(TypedText, breathesAfterASentence) {
    const auto gap = [](std::string_view text) {
        double total = 0.0;
        for (std::uint64_t seed = 0; seed < 50; ++seed) {
            std::vector<double> times;
            for (const KeyEvent& event : typeText(text, seed).events) {
                if (event.down) {
                    times.push_back(event.millis);
                }
            }
            total += times.back() - times.front();
        }
        return total / 50.0;
    };
    EXPECT_GT(gap(".a"), gap("ba") + 150.0);
}

} // namespace
} // namespace vornic
