#include "Vornic/typing/HotKeyMatch.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace vornic {
namespace {

constexpr std::uint32_t keyboard = 1;
constexpr std::uint32_t anotherKeyboard = 2;

// Virtual key codes.
constexpr std::int64_t keyK = 40;
constexpr std::int64_t keyJ = 38;
constexpr std::int64_t command = 55;
constexpr std::int64_t rightCommand = 54;
constexpr std::int64_t shift = 56;
constexpr std::int64_t capsLock = 57;
constexpr std::int64_t option = 58;
constexpr std::int64_t rightOption = 61;
constexpr std::int64_t control = 59;

/// Whether the last of `keys` completes the combination while all others are down.
bool matches(std::initializer_list<std::int64_t> keys) {
    HotKeyMatch match;
    bool last = false;
    for (const std::int64_t key : keys) {
        last = match.key(keyboard, key, true);
    }
    return last;
}

TEST(HotKeyMatch, needsBothModifiersAndK) {
    EXPECT_TRUE(matches({option, command, keyK}));
    EXPECT_TRUE(matches({command, option, keyK}));
    EXPECT_FALSE(matches({option, keyK}));
    EXPECT_FALSE(matches({command, keyK}));
    EXPECT_FALSE(matches({keyK}));
    EXPECT_FALSE(matches({option, command, keyJ}));
    EXPECT_FALSE(matches({keyK, option, command}));
}

TEST(HotKeyMatch, eitherSideCounts) {
    EXPECT_TRUE(matches({rightOption, rightCommand, keyK}));
    EXPECT_TRUE(matches({option, rightCommand, keyK}));
}

TEST(HotKeyMatch, moreModifiersAreAnotherCombination) {
    EXPECT_FALSE(matches({option, command, shift, keyK}));
    EXPECT_FALSE(matches({option, command, control, keyK}));
}

TEST(HotKeyMatch, capsLockChangesNothing) {
    EXPECT_TRUE(matches({capsLock, option, command, keyK}));
}

TEST(HotKeyMatch, aReleasedModifierCountsNoMore) {
    HotKeyMatch match;
    match.key(keyboard, option, true);
    match.key(keyboard, command, true);
    match.key(keyboard, command, false);
    EXPECT_FALSE(match.key(keyboard, keyK, true));
}

TEST(HotKeyMatch, onePressMatchesOnceAndTheNextAgain) {
    HotKeyMatch match;
    match.key(keyboard, option, true);
    match.key(keyboard, command, true);
    EXPECT_TRUE(match.key(keyboard, keyK, true));
    EXPECT_FALSE(match.key(keyboard, keyK, false));
    EXPECT_TRUE(match.key(keyboard, keyK, true));
}

TEST(HotKeyMatch, aKeyboardThatGoesTakesItsModifiersAlongAndNoOthers) {
    HotKeyMatch match;
    match.key(keyboard, option, true);
    match.key(keyboard, command, true);
    match.forgetKeyboard(keyboard);
    EXPECT_FALSE(match.key(keyboard, keyK, true));
    match.key(keyboard, option, true);
    match.key(keyboard, command, true);
    match.forgetKeyboard(anotherKeyboard);
    EXPECT_TRUE(match.key(keyboard, keyK, true));
}

TEST(HotKeyMatch, modifiersOfSeveralKeyboardsCountTogetherAndEachForItself) {
    HotKeyMatch match;
    match.key(keyboard, option, true);
    match.key(anotherKeyboard, command, true);
    EXPECT_TRUE(match.key(keyboard, keyK, true));
    match.key(keyboard, command, true);
    match.key(keyboard, command, false);
    EXPECT_TRUE(match.key(keyboard, keyK, true)) << "it is still down on the other one";
}

} // namespace
} // namespace vornic
