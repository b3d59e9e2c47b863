#include "Vornic/platform/linux/EvdevKeyCodes.h"

#include "VornicCore/keys/KeyClass.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <set>
#include <utility>

namespace vornic {
namespace {

TEST(EvdevKeyCodes, placesTheKeysOfTheBoard) {
    const std::pair<unsigned, std::int64_t> expected[] = {
        {KEY_A, 0},          {KEY_Z, 6},          {KEY_1, 18},         {KEY_0, 29},
        {KEY_GRAVE, 50},     {KEY_102ND, 10},     {KEY_MINUS, 27},     {KEY_EQUAL, 24},
        {KEY_BACKSLASH, 42}, {KEY_SPACE, 49},     {KEY_ENTER, 36},     {KEY_KPENTER, 76},
        {KEY_BACKSPACE, 51}, {KEY_DELETE, 117},   {KEY_TAB, 48},       {KEY_ESC, 53},
        {KEY_CAPSLOCK, 57},  {KEY_INSERT, 114},   {KEY_HOME, 115},     {KEY_END, 119},
        {KEY_PAGEUP, 116},   {KEY_PAGEDOWN, 121}, {KEY_UP, 126},       {KEY_DOWN, 125},
        {KEY_LEFT, 123},     {KEY_RIGHT, 124},    {KEY_KP0, 82},       {KEY_KPDOT, 65},
        {KEY_NUMLOCK, 71},   {KEY_KPPLUS, 69},    {KEY_LEFTSHIFT, 56}, {KEY_RIGHTSHIFT, 60},
        {KEY_LEFTCTRL, 59},  {KEY_RIGHTCTRL, 62}, {KEY_LEFTALT, 58},   {KEY_RIGHTALT, 61},
        {KEY_LEFTMETA, 55},  {KEY_RIGHTMETA, 54}, {KEY_F1, 122},       {KEY_F12, 111},
        {KEY_F13, 105},      {KEY_F20, 90},
    };
    for (const auto& [evdev, virtualKey] : expected) {
        EXPECT_EQ(virtualKeyCode(evdev), virtualKey) << evdev;
    }
}

TEST(EvdevKeyCodes, everyKeyHasACodeOfItsOwn) {
    std::set<std::int64_t> codes;
    for (unsigned evdev = 0; evdev < KEY_CNT; ++evdev) {
        EXPECT_TRUE(codes.insert(virtualKeyCode(evdev)).second) << evdev;
    }
}

TEST(EvdevKeyCodes, everyPlaceOfTheBoardCanBeReached) {
    std::set<std::int64_t> reached;
    for (unsigned evdev = 0; evdev < KEY_CNT; ++evdev) {
        reached.insert(virtualKeyCode(evdev));
    }
    // Letters, digits, punctuation, keypad, function row, navigation and modifiers lie below 127;
    // what is missing there are codes that stand for no key.
    const std::set<std::int64_t> noKey{52, 66, 68, 70, 77, 108, 112, 127};
    for (std::int64_t code = 0; code < 127; ++code) {
        EXPECT_TRUE(reached.contains(code) || noKey.contains(code) || code == 104) << code;
    }
}

TEST(EvdevKeyCodes, foreignKeysSoundWithAStableCodeOutsideTheTable) {
    EXPECT_EQ(virtualKeyCode(KEY_PLAYPAUSE), firstForeignKeyCode + KEY_PLAYPAUSE);
    EXPECT_EQ(keyClassOf(virtualKeyCode(KEY_PLAYPAUSE)), KeyClass::regular);
}

} // namespace
} // namespace vornic
