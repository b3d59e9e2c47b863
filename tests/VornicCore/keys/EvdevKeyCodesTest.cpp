#include "VornicCore/base/CaseNames.h"
#include "VornicCore/keys/KeyClass.h"
#include "VornicCore/keys/KeyGroup.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "VornicCore/keys/KnownKeys.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <set>
#include <utility>

namespace vornic {
namespace {

// The first and the last key that an X server can send: its keycodes are 8 to 255.
constexpr std::uint32_t lastOfX11 = 247;

TEST(EvdevKeyCodes, placesEveryKey) {
    const std::pair<std::uint32_t, std::int64_t> expected[] = {
        // letters
        {KEY_A, 0},
        {KEY_S, 1},
        {KEY_D, 2},
        {KEY_F, 3},
        {KEY_H, 4},
        {KEY_G, 5},
        {KEY_Z, 6},
        {KEY_X, 7},
        {KEY_C, 8},
        {KEY_V, 9},
        {KEY_B, 11},
        {KEY_Q, 12},
        {KEY_W, 13},
        {KEY_E, 14},
        {KEY_R, 15},
        {KEY_Y, 16},
        {KEY_T, 17},
        {KEY_O, 31},
        {KEY_U, 32},
        {KEY_I, 34},
        {KEY_P, 35},
        {KEY_L, 37},
        {KEY_J, 38},
        {KEY_K, 40},
        {KEY_N, 45},
        {KEY_M, 46},
        // digits
        {KEY_1, 18},
        {KEY_2, 19},
        {KEY_3, 20},
        {KEY_4, 21},
        {KEY_6, 22},
        {KEY_5, 23},
        {KEY_9, 25},
        {KEY_7, 26},
        {KEY_8, 28},
        {KEY_0, 29},
        // punctuation
        {KEY_EQUAL, 24},
        {KEY_MINUS, 27},
        {KEY_RIGHTBRACE, 30},
        {KEY_LEFTBRACE, 33},
        {KEY_APOSTROPHE, 39},
        {KEY_SEMICOLON, 41},
        {KEY_BACKSLASH, 42},
        {KEY_COMMA, 43},
        {KEY_SLASH, 44},
        {KEY_DOT, 47},
        {KEY_GRAVE, 50},
        {KEY_102ND, 10},
        // editing
        {KEY_ENTER, 36},
        {KEY_TAB, 48},
        {KEY_SPACE, 49},
        {KEY_BACKSPACE, 51},
        {KEY_ESC, 53},
        {KEY_DELETE, 117},
        {KEY_INSERT, 114},
        // navigation
        {KEY_HOME, 115},
        {KEY_PAGEUP, 116},
        {KEY_END, 119},
        {KEY_PAGEDOWN, 121},
        {KEY_LEFT, 123},
        {KEY_RIGHT, 124},
        {KEY_DOWN, 125},
        {KEY_UP, 126},
        {KEY_COMPOSE, 110},
        // modifiers
        {KEY_RIGHTMETA, 54},
        {KEY_LEFTMETA, 55},
        {KEY_LEFTSHIFT, 56},
        {KEY_CAPSLOCK, 57},
        {KEY_LEFTALT, 58},
        {KEY_LEFTCTRL, 59},
        {KEY_RIGHTSHIFT, 60},
        {KEY_RIGHTALT, 61},
        {KEY_RIGHTCTRL, 62},
        {KEY_FN, 63},
        // keypad
        {KEY_KPDOT, 65},
        {KEY_KPASTERISK, 67},
        {KEY_KPPLUS, 69},
        {KEY_NUMLOCK, 71},
        {KEY_KPSLASH, 75},
        {KEY_KPENTER, 76},
        {KEY_KPMINUS, 78},
        {KEY_KPEQUAL, 81},
        {KEY_KP0, 82},
        {KEY_KP1, 83},
        {KEY_KP2, 84},
        {KEY_KP3, 85},
        {KEY_KP4, 86},
        {KEY_KP5, 87},
        {KEY_KP6, 88},
        {KEY_KP7, 89},
        {KEY_KP8, 91},
        {KEY_KP9, 92},
        // function row
        {KEY_F1, 122},
        {KEY_F2, 120},
        {KEY_F3, 99},
        {KEY_F4, 118},
        {KEY_F5, 96},
        {KEY_F6, 97},
        {KEY_F7, 98},
        {KEY_F8, 100},
        {KEY_F9, 101},
        {KEY_F10, 109},
        {KEY_F11, 103},
        {KEY_F12, 111},
        {KEY_F13, 105},
        {KEY_F14, 107},
        {KEY_F15, 113},
        {KEY_F16, 106},
        {KEY_F17, 64},
        {KEY_F18, 79},
        {KEY_F19, 80},
        {KEY_F20, 90},
        // sound, and the keys of Japanese keyboards
        {KEY_VOLUMEUP, 72},
        {KEY_VOLUMEDOWN, 73},
        {KEY_MUTE, 74},
        {KEY_YEN, 93},
        {KEY_RO, 94},
        {KEY_KPCOMMA, 95},
        {KEY_HANJA, 102},
        {KEY_HANGEUL, 104},
    };
    std::set<std::uint32_t> placed;
    for (const auto& [evdev, virtualKey] : expected) {
        EXPECT_EQ(keyCodeOfEvdev(evdev), virtualKey) << evdev;
        placed.insert(evdev);
    }
    for (std::uint32_t evdev = 0; evdev < KEY_CNT; ++evdev) {
        EXPECT_EQ(keyCodeOfEvdev(evdev) < firstForeignKeyCode, placed.contains(evdev)) << evdev;
    }
}

TEST(EvdevKeyCodes, everyKeyHasACodeOfItsOwn) {
    std::set<std::int64_t> codes;
    for (std::uint32_t evdev = 0; evdev < KEY_CNT; ++evdev) {
        EXPECT_TRUE(codes.insert(keyCodeOfEvdev(evdev)).second) << evdev;
    }
}

TEST(EvdevKeyCodes, anXServerReachesEveryDrawnKeyButFn) {
    std::set<std::int64_t> reached;
    for (std::uint32_t evdev = 0; evdev <= lastOfX11; ++evdev) {
        reached.insert(keyCodeOfEvdev(evdev));
    }
    for (const LayoutID id : allCases<LayoutID>()) {
        for (const LayoutKey& key : layout(id).keys) {
            if (key.code) {
                EXPECT_EQ(reached.contains(*key.code), *key.code != 63) << *key.code;
            }
        }
    }
}

TEST(EvdevKeyCodes, foreignKeysSoundWithAStableCodeOutsideTheTable) {
    EXPECT_EQ(keyCodeOfEvdev(KEY_PLAYPAUSE), 1000 + 164);
    EXPECT_EQ(keyCodeOfEvdev(KEY_SYSRQ), 1000 + 99);
    EXPECT_EQ(keyClassOf(keyCodeOfEvdev(KEY_PLAYPAUSE)), KeyClass::regular);
    EXPECT_EQ(keyGroupOf(keyCodeOfEvdev(KEY_PLAYPAUSE)), KeyGroup::alphas);
}

} // namespace
} // namespace vornic
