#include "Vornic/linux/keys/KeyboardForms.h"

#include "VornicCore/keys/KeyboardLayout.h"
#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <fstream>

namespace vornic {
namespace {

constexpr std::uint32_t keyboard = 1;
constexpr std::uint32_t another = 2;

TEST(KeyboardForms, anAnsiKeyboardsKeyLeftOfOneIsTheGrave) {
    KeyboardForms forms(KeyboardForm::ansi);
    EXPECT_EQ(forms.keyCode(keyboard, KEY_GRAVE), 50);
    EXPECT_EQ(forms.keyCode(keyboard, KEY_A), 0);
}

TEST(KeyboardForms, onAnIsoKeyboardBothKeysLieWhereTheyAreDrawn) {
    KeyboardForms forms(KeyboardForm::iso);
    const KeyboardLayout iso = KeyboardLayout::build(LayoutID::macISO);
    // The key left of 1 begins the number row, the other one stands between Shift and Z.
    EXPECT_LT(*iso.position(forms.keyCode(keyboard, KEY_GRAVE)),
              *iso.position(forms.keyCode(keyboard, KEY_1)));
    EXPECT_EQ(*iso.position(forms.keyCode(keyboard, KEY_GRAVE)), 2 * (0.5 / 14.5 - 0.5));
    EXPECT_EQ(*iso.position(forms.keyCode(keyboard, KEY_102ND)), 2 * (1.75 / 14.5 - 0.5));
    EXPECT_EQ(forms.keyCode(keyboard, KEY_A), 0);
}

TEST(KeyboardForms, aKeyboardShowsItsFormByTheKeyThatOnlyAnIsoOneHas) {
    KeyboardForms forms(KeyboardForm::ansi);
    EXPECT_EQ(forms.keyCode(keyboard, KEY_102ND), 50);
    EXPECT_EQ(forms.keyCode(keyboard, KEY_GRAVE), 10);
    EXPECT_EQ(forms.keyCode(another, KEY_GRAVE), 50);
}

TEST(KeyboardForms, theLayoutSaysWhichKeyboardsAreUsual) {
    EXPECT_EQ(formOfLayout("us"), KeyboardForm::ansi);
    EXPECT_EQ(formOfLayout(""), KeyboardForm::ansi);
    EXPECT_EQ(formOfLayout("de"), KeyboardForm::iso);
    EXPECT_EQ(formOfLayout("gb,us"), KeyboardForm::iso);
    EXPECT_EQ(formOfLayout("us,de"), KeyboardForm::ansi);
    EXPECT_EQ(formOfLayout("de(nodeadkeys)"), KeyboardForm::iso);
}

TEST(KeyboardForms, theLayoutIsReadFromTheSystemsFile) {
    ScratchFolder scratch;
    EXPECT_EQ(configuredForm(scratch / "none"), KeyboardForm::ansi);
    std::ofstream(scratch / "keyboard") << "XKBMODEL=\"pc105\"\nXKBLAYOUT=\"fr\"\n";
    EXPECT_EQ(configuredForm(scratch / "keyboard"), KeyboardForm::iso);
}

} // namespace
} // namespace vornic
