#include "Vornic/linux/quiet/PasswordFocus.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

const AccessibleObject field{.program = ":1.7", .path = "/field"};
const AccessibleObject other{.program = ":1.7", .path = "/other"};
const AccessibleObject elsewhere{.program = ":1.8", .path = "/field"};

/// With a password being typed into `field`.
struct PasswordFocusTest : ::testing::Test {
    PasswordFocusTest() {
        focus.focused(field);
        focus.answered(field, true);
    }
    PasswordFocus focus;
};

TEST(PasswordFocus, beginsWithNothing) {
    const PasswordFocus focus;
    EXPECT_FALSE(focus.active());
    EXPECT_FALSE(focus.toWatch());
}

TEST(PasswordFocus, aFieldIsNoPasswordBeforeItsAnswer) {
    PasswordFocus focus;
    focus.focused(field);
    EXPECT_FALSE(focus.active());
    EXPECT_FALSE(focus.toWatch());
    focus.answered(field, false);
    EXPECT_FALSE(focus.active());
}

TEST_F(PasswordFocusTest, aPasswordFieldWithTheFocusIsActiveAndWatched) {
    EXPECT_TRUE(focus.active());
    EXPECT_EQ(focus.toWatch(), field);
}

TEST_F(PasswordFocusTest, sayingItTwiceChangesNothing) {
    focus.focused(field);
    EXPECT_TRUE(focus.active());
}

TEST_F(PasswordFocusTest, endsWhenTheFieldLosesTheFocus) {
    focus.unfocused(field);
    EXPECT_FALSE(focus.active());
    EXPECT_FALSE(focus.toWatch());
}

TEST_F(PasswordFocusTest, goesOnWhenAnotherFieldLosesTheFocus) {
    focus.unfocused(other);
    focus.unfocused(elsewhere);
    EXPECT_TRUE(focus.active());
}

TEST_F(PasswordFocusTest, endsAtOnceWhenAnotherFieldGetsTheFocus) {
    focus.focused(other);
    EXPECT_FALSE(focus.active());
    focus.unfocused(field);
    focus.answered(other, true);
    EXPECT_TRUE(focus.active());
    EXPECT_EQ(focus.toWatch(), other);
}

TEST_F(PasswordFocusTest, endsWhenItsProgramIsLeftOrGone) {
    focus.left(elsewhere.program);
    EXPECT_TRUE(focus.active());
    focus.left(field.program);
    EXPECT_FALSE(focus.active());
}

TEST_F(PasswordFocusTest, anAnswerThatComesTooLateCountsForNothing) {
    focus.focused(other);
    focus.answered(field, true);
    EXPECT_FALSE(focus.active());
    focus.answered(other, true);
    focus.unfocused(other);
    focus.answered(other, true);
    EXPECT_FALSE(focus.active());
}

} // namespace
} // namespace vornic
