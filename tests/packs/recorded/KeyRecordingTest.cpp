#include "packs/recorded/KeyRecording.h"

#include <gtest/gtest.h>

namespace vornic::packs {
namespace {

KeyClass classOf(std::string_view name) {
    const auto recording = keyRecordingNamed(name);
    EXPECT_TRUE(recording) << name;
    return recording ? recording->keyClass : KeyClass::regular;
}

Stroke strokeOf(std::string_view name) {
    const auto recording = keyRecordingNamed(name);
    EXPECT_TRUE(recording) << name;
    return recording ? recording->stroke : Stroke::press;
}

TEST(KeyRecording, sortsKeysIntoClasses) {
    EXPECT_EQ(classOf("39-1.wav"), KeyClass::space);
    for (const char* name : {"1c-1.wav", "60-1.wav"}) {
        EXPECT_EQ(classOf(name), KeyClass::enter) << name;
    }
    for (const char* name : {"0e-1.wav", "6f-0.wav"}) {
        EXPECT_EQ(classOf(name), KeyClass::backspace) << name;
    }
    for (const char* name : {"1d-1.wav", "2a-1.wav", "36-1.wav", "38-1.wav", "3a-1.wav", "5b-1.wav",
                             "61-1.wav", "64-1.wav", "7d-1.wav", "7e-0.wav"}) {
        EXPECT_EQ(classOf(name), KeyClass::modifier) << name;
    }
    // Letters, digits, Tab, Escape, a function key, an arrow.
    for (const char* name :
         {"1e-1.wav", "02-1.wav", "0f-1.wav", "01-1.wav", "3b-1.wav", "67-1.wav"}) {
        EXPECT_EQ(classOf(name), KeyClass::regular) << name;
    }
}

TEST(KeyRecording, oneIsThePressAndZeroTheRelease) {
    EXPECT_EQ(strokeOf("1e-1.wav"), Stroke::press);
    EXPECT_EQ(strokeOf("1e-0.wav"), Stroke::release);
}

TEST(KeyRecording, thePauseKeyHasOnlyAPress) {
    EXPECT_EQ(strokeOf("77-0.wav"), Stroke::press);
    EXPECT_EQ(strokeOf("77-1.wav"), Stroke::press);
}

TEST(KeyRecording, readsNoOtherName) {
    for (const char* name : {"", "ff.wav", "1e-2.wav", "1e-.wav", "zz-1.wav", "1z-1.wav",
                             "1e_1.wav", "1e-1.ogg", "11e-1.wav", "-e-1.wav", "1e-1.wav~"}) {
        EXPECT_FALSE(keyRecordingNamed(name)) << name;
    }
}

} // namespace
} // namespace vornic::packs
