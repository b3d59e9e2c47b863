#include "Vornic/quiet/Silence.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

TEST(Silence, thereIsNoneWhileTheSoundsAreOnAndNothingSpeaksAgainstThem) {
    EXPECT_EQ(silence({.soundsOn = true, .quietDuringCalls = true}), std::nullopt);
}

TEST(Silence, recordingWinsOverEverything) {
    EXPECT_EQ(silence({.soundsOn = false, .recording = true}), Silence::recording);
    EXPECT_EQ(silence({.soundsOn = true,
                       .quietDuringCalls = true,
                       .recording = true,
                       .secureInput = true,
                       .micInUse = true}),
              Silence::recording);
}

TEST(Silence, switchedOffTheProgramReportsNeitherCallNorPassword) {
    EXPECT_EQ(
        silence(
            {.soundsOn = false, .quietDuringCalls = true, .secureInput = true, .micInUse = true}),
        Silence::off);
}

TEST(Silence, theMicrophoneComesBeforeThePassword) {
    EXPECT_EQ(
        silence(
            {.soundsOn = true, .quietDuringCalls = true, .secureInput = true, .micInUse = true}),
        Silence::microphone);
    EXPECT_EQ(silence({.soundsOn = true, .quietDuringCalls = true, .secureInput = true}),
              Silence::password);
}

TEST(Silence, aRunningMicrophoneDoesNotMatterUnlessTheUserAsksForIt) {
    const QuietFacts facts{.soundsOn = true, .quietDuringCalls = false, .micInUse = true};
    EXPECT_EQ(silence(facts), std::nullopt);
    EXPECT_EQ(statusLine(silence(facts), "Deep", Placement::desk), "Deep · On the desk");
}

TEST(Silence, theStatusLineSaysTheReason) {
    EXPECT_EQ(statusLine(Silence::off, "Deep", Placement::desk), "Off · keys are silent");
    EXPECT_EQ(statusLine(Silence::microphone, "Deep", Placement::desk),
              "Silent while your microphone is on");
    EXPECT_EQ(statusLine(Silence::password, "Deep", Placement::close),
              "Paused while you type a password");
    EXPECT_EQ(statusLine(Silence::recording, "Deep", Placement::close),
              "Quiet while recording your keyboard");
}

TEST(Silence, withoutAReasonTheStatusLineNamesTheBoardAndItsPlace) {
    EXPECT_EQ(statusLine(std::nullopt, "Soft", Placement::close), "Soft · Close");
    EXPECT_EQ(statusLine(std::nullopt, "Soft", Placement::desk), "Soft · On the desk");
}

} // namespace
} // namespace vornic
