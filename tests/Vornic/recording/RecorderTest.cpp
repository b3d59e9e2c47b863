#include "Vornic/recording/Recorder.h"

#include "VornicCore/dsp/DSP.h"
#include "tests/support/ExpectRealTimeSafe.h"
#include "tests/support/FakeMicrophone.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vornic {
namespace {

class RecorderTest : public testing::Test {
  protected:
    FakeMicrophone microphone_;
    Recorder recorder_{microphone_};
};

TEST_F(RecorderTest, keepsWhatItHearsBetweenStartAndStop) {
    microphone_.hear({1});
    EXPECT_TRUE(recorder_.start(20));
    EXPECT_TRUE(recorder_.isRecording());
    microphone_.hear({0.5F, -0.25F});
    microphone_.hear({0.125F});
    EXPECT_EQ(recorder_.stop(), (std::vector<float>{0.5F, -0.25F, 0.125F}));
    EXPECT_FALSE(recorder_.isRecording());
    EXPECT_FALSE(microphone_.isOpen);
}

TEST_F(RecorderTest, returnsNothingWhenItDoesNotRecord) {
    EXPECT_TRUE(recorder_.stop().empty());
    EXPECT_TRUE(recorder_.start(1));
    EXPECT_TRUE(recorder_.stop().empty());
    EXPECT_TRUE(recorder_.stop().empty());
}

TEST_F(RecorderTest, dropsWhatComesAfterTheLimit) {
    EXPECT_TRUE(recorder_.start(20));
    const std::vector<float> second(48000, 0.5F);
    for (int i = 0; i < 19; ++i) {
        microphone_.hear(second);
    }
    microphone_.hear(std::vector<float>(40000, 0.5F));
    microphone_.hear(second);
    microphone_.hear(second);
    EXPECT_EQ(recorder_.stop().size(), 960000U);
}

TEST_F(RecorderTest, cutsTheLimitToWholeSamples) {
    EXPECT_TRUE(recorder_.start(2.99 / 48000));
    microphone_.hear({0.5F, 0.5F, 0.5F});
    EXPECT_EQ(recorder_.stop().size(), 2U);
}

TEST_F(RecorderTest, showsTheLoudestSampleKeptOfTheLastBlock) {
    EXPECT_EQ(recorder_.level(), 0.0F);
    EXPECT_TRUE(recorder_.start(4.5 / 48000));
    microphone_.hear({0.25F, -0.75F, 0.5F});
    EXPECT_EQ(recorder_.level(), 0.75F);
    microphone_.hear({0.125F, 1.0F});
    EXPECT_EQ(recorder_.level(), 0.125F) << "the second was dropped";
    microphone_.hear({1.0F});
    EXPECT_EQ(recorder_.level(), 0.0F) << "nothing was kept";
}

TEST_F(RecorderTest, goesOnWhenStartedAgain) {
    EXPECT_TRUE(recorder_.start(20));
    microphone_.hear({0.5F});
    EXPECT_TRUE(recorder_.start(20));
    EXPECT_EQ(microphone_.opened, 1);
    EXPECT_EQ(recorder_.stop(), std::vector<float>{0.5F});
}

TEST_F(RecorderTest, beginsAnewAfterEachStop) {
    EXPECT_TRUE(recorder_.start(20));
    microphone_.hear({0.5F});
    recorder_.stop();
    EXPECT_TRUE(recorder_.start(20));
    EXPECT_EQ(recorder_.level(), 0.0F);
    microphone_.hear({0.25F});
    EXPECT_EQ(recorder_.stop(), std::vector<float>{0.25F});
}

TEST_F(RecorderTest, refusesWithoutAUsableMicrophone) {
    for (const auto& format :
         {std::optional<MicrophoneInput::Format>(), std::optional(MicrophoneInput::Format{0, 1}),
          std::optional(MicrophoneInput::Format{-1, 1}),
          std::optional(MicrophoneInput::Format{std::nan(""), 1}),
          std::optional(MicrophoneInput::Format{48000, 0})}) {
        microphone_.format = format;
        EXPECT_FALSE(recorder_.start(20));
        EXPECT_FALSE(recorder_.isRecording());
        EXPECT_FALSE(microphone_.isOpen);
    }
    EXPECT_TRUE(recorder_.stop().empty());
}

TEST_F(RecorderTest, refusesAMicrophoneThatDoesNotStart) {
    microphone_.starts = false;
    EXPECT_FALSE(recorder_.start(20));
    EXPECT_FALSE(recorder_.isRecording());
    EXPECT_FALSE(microphone_.isOpen);
    EXPECT_EQ(recorder_.problem(), "No microphone.");
}

TEST_F(RecorderTest, bringsOtherRatesToFortyEightKilohertzAtTheirTrueSpeed) {
    microphone_.format = {44100, 1};
    EXPECT_TRUE(recorder_.start(20));
    EXPECT_EQ(recorder_.inputRate(), 44100);
    std::vector<float> tone;
    for (int i = 0; i < 44100 * 20; ++i) {
        tone.push_back(std::sin(static_cast<float>(i) * 0.01F));
    }
    microphone_.hear(tone);
    const std::vector<float> recorded = recorder_.stop();
    EXPECT_NEAR(static_cast<double>(recorded.size()), 960000, 1);
    EXPECT_EQ(recorded, DSP::resample(tone, 12 * std::log2(44100.0 / 48000.0)));
    // Still the same tone: its phase advances by the ratio of the rates.
    EXPECT_NEAR(recorded[960], std::sin(960.0 * 0.01 * 44100 / 48000), 1e-3);
}

TEST_F(RecorderTest, letsThePartBeHeardThatIsNew) {
    std::vector<float> heard;
    recorder_.hear(heard);
    EXPECT_TRUE(recorder_.start(20));
    microphone_.hear({0.5F, 0.25F});
    recorder_.hear(heard);
    EXPECT_EQ(heard, (std::vector<float>{0.5F, 0.25F}));
    microphone_.hear({0.125F});
    recorder_.hear(heard);
    recorder_.hear(heard);
    EXPECT_EQ(heard, (std::vector<float>{0.5F, 0.25F, 0.125F}));
}

TEST_F(RecorderTest, keepsWhatWasCapturedWhenTheMicrophoneGoes) {
    std::vector<std::string> messages;
    recorder_.onLost = [&](const std::string& message) { messages.push_back(message); };
    microphone_.lose();
    EXPECT_TRUE(messages.empty());
    EXPECT_TRUE(recorder_.start(20));
    microphone_.hear({0.5F});
    microphone_.lose();
    EXPECT_EQ(messages, std::vector<std::string>{
                            "The microphone is gone. What it heard until then has been kept."});
    EXPECT_EQ(recorder_.stop(), std::vector<float>{0.5F});
}

TEST_F(RecorderTest, passesTheAnswerToTheRequestOn) {
    std::vector<bool> answers;
    recorder_.requestAccess([&](bool granted) { answers.push_back(granted); });
    microphone_.granted = false;
    recorder_.requestAccess([&](bool granted) { answers.push_back(granted); });
    EXPECT_EQ(answers, (std::vector<bool>{true, false}));
}

TEST_F(RecorderTest, isSilentWhereTheMicrophoneMissedSomethingAndSaysWhere) {
    microphone_.format = MicrophoneInput::Format{1000, 1};
    EXPECT_TRUE(recorder_.start(0.01));
    microphone_.hear({0.5F, 0.25F});
    microphone_.drop(3);
    EXPECT_EQ(recorder_.gaps(), (std::vector<Gap>{{0.002, 0.003}}));
    microphone_.hear({0.125F});
    std::vector<float> heard;
    recorder_.hear(heard);
    EXPECT_EQ(heard, (std::vector<float>{0.5F, 0.25F, 0.0F, 0.0F, 0.0F, 0.125F}));
    microphone_.drop(100);
    recorder_.stop();
    EXPECT_EQ(recorder_.gaps(), (std::vector<Gap>{{0.002, 0.003}, {0.006, 0.004}}))
        << "the last recording's";
    EXPECT_TRUE(recorder_.start(0.01));
    EXPECT_TRUE(recorder_.gaps().empty());
}

TEST_F(RecorderTest, keepsTheLengthHoweverManyGapsThereAre) {
    EXPECT_TRUE(recorder_.start(1));
    for (int i = 0; i < 300; ++i) {
        microphone_.drop(2);
        microphone_.hear({0.5F});
    }
    EXPECT_EQ(recorder_.stop().size(), 900U);
    EXPECT_EQ(recorder_.gaps().size(), 256U);
}

TEST_F(RecorderTest, listensRealTimeSafely) {
    EXPECT_TRUE(recorder_.start(0.1));
    const std::vector<float> block(2048, 0.5F);
    // Also when it is full.
    expectRealTimeSafe([&] {
        for (int i = 0; i < 4; ++i) {
            microphone_.taker()->take(block.data(), 2048);
            microphone_.taker()->miss(100);
        }
    });
    EXPECT_EQ(recorder_.stop().size(), 4800U);
}

TEST(Recorder, stopsTheMicrophoneWhenItGoes) {
    FakeMicrophone microphone;
    {
        Recorder recorder(microphone);
        EXPECT_TRUE(recorder.start(20));
    }
    EXPECT_FALSE(microphone.isCapturing());
    microphone.lose();
}

} // namespace
} // namespace vornic
