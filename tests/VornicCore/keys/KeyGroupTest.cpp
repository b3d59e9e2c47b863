#include "VornicCore/keys/KeyGroup.h"

#include "VornicCore/keys/KeyClass.h"
#include "VornicCore/keys/KeySet.h"
#include "VornicCore/keys/ModifierKeys.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace vornic {
namespace {

void expectGroup(KeyGroup group, const std::vector<std::int64_t>& codes) {
    for (const std::int64_t code : codes) {
        EXPECT_EQ(keyGroupOf(code), group) << code;
    }
}

TEST(KeyGroup, sortsTheKeys) {
    expectGroup(KeyGroup::numbers, {18, 19, 20, 21, 22, 23, 25, 26, 28, 29});
    expectGroup(KeyGroup::enter, {36, 76});
    expectGroup(KeyGroup::space, {49});
    expectGroup(KeyGroup::backspace, {51, 117});
    expectGroup(KeyGroup::arrows, {123, 124, 125, 126});
    expectGroup(KeyGroup::modifiers, {54, 55, 56, 57, 58, 59, 60, 61, 62, 63});
    expectGroup(KeyGroup::function, {53,  122, 120, 99,  118, 96,  97,  98,  100, 101, 109,
                                     103, 111, 105, 107, 113, 114, 115, 116, 119, 121});
}

TEST(KeyGroup, tabIsAModifierHereAndARegularKeyInItsSound) {
    EXPECT_EQ(keyGroupOf(48), KeyGroup::modifiers);
    EXPECT_EQ(keyClassOf(48), KeyClass::regular);
}

TEST(KeyGroup, forwardDeleteIsABackspaceAndNoFunctionKey) {
    EXPECT_EQ(keyGroupOf(117), KeyGroup::backspace);
    EXPECT_EQ(keyClassOf(117), KeyClass::backspace);
    EXPECT_EQ(std::set(functionCodes.begin(), functionCodes.end()).count(117), 0U);
    EXPECT_EQ(keyGroupOf(53), KeyGroup::function);
}

TEST(KeyGroup, everythingElseIsAnAlpha) {
    // Letters, punctuation, minus, equals, the keypad and codes that nobody knows.
    expectGroup(KeyGroup::alphas, {0, 12, 24, 27, 41, 50, 10, 65, 82, 91, 200, 1059, -1});
    EXPECT_EQ(keyClassOf(200), KeyClass::regular);
    EXPECT_FALSE(ModifierKeys::isDown(200, ~0ULL).has_value());
}

TEST(KeyGroup, hasDifferentFunctionCodes) {
    EXPECT_EQ(std::set(functionCodes.begin(), functionCodes.end()).size(), 21U);
}

TEST(KeyGroup, namesItsCasesInOrder) {
    const std::vector<std::string_view> raw{"alphas", "numbers",   "modifiers", "space",
                                            "enter",  "backspace", "arrows",    "function"};
    const std::vector<std::string_view> labels{"Alphas", "Numbers",   "Modifiers", "Space",
                                               "Enter",  "Backspace", "Arrows",    "Function row"};
    const auto cases = allCases<KeyGroup>();
    ASSERT_EQ(cases.size(), raw.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(cases[i]), i);
        EXPECT_EQ(rawString(cases[i]), raw[i]);
        EXPECT_EQ(label(cases[i]), labels[i]);
        EXPECT_EQ(caseFromRawString<KeyGroup>(raw[i]), cases[i]);
    }
    EXPECT_FALSE(caseFromRawString<KeyGroup>("Alphas").has_value());
    EXPECT_FALSE(caseFromRawString<KeyGroup>("").has_value());
}

TEST(KeySet, holdsTheStabilisedKeys) {
    for (const std::int64_t code : {49, 36, 76, 51, 56, 60}) {
        EXPECT_TRUE(KeySet::isStabilised(code)) << code;
    }
    for (const std::int64_t code : {0, 48, 57, 117, 200, -1}) {
        EXPECT_FALSE(KeySet::isStabilised(code)) << code;
    }
    EXPECT_EQ(KeySet::stabilised.size(), 6U);
}

} // namespace
} // namespace vornic
