#include "VornicCore/keys/KeyLayout.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "VornicCore/realtime/Latency.h"
#include "tests/Vornic/typing/KeystrokeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class KeystrokeDriverTest : public KeystrokeFixture {};

TEST_F(KeystrokeDriverTest, isSilentWithoutABankAndQueuesNothing) {
    bank.reset();
    useBoard(plainBoard());
    driver.key(letterF, true, 0);
    EXPECT_EQ(driver.played(), 0);
    EXPECT_EQ(engine.core().pushedEvents(), 0u);
    EXPECT_FALSE(output.isRunning());
}

TEST_F(KeystrokeDriverTest, isSilentBeforeItHasABoard) {
    driver.key(letterF, true, 0);
    EXPECT_EQ(driver.played(), 0);
}

TEST_F(KeystrokeDriverTest, aKeyThatTheBoardDoesNotResolveIsSilent) {
    Board board = plainBoard();
    board.sounds.clear();
    useBoard(board);
    driver.key(letterF, true, 0);
    EXPECT_EQ(driver.played(), 0);
}

TEST_F(KeystrokeDriverTest, isSilentWhileSilenced) {
    useBoard(plainBoard(), false, true);
    driver.key(letterF, true, 0);
    driver.key(letterF, false, 0);
    EXPECT_EQ(driver.played(), 0);
}

TEST_F(KeystrokeDriverTest, isSilentWhenTheOutputCannotStart) {
    output.available = false;
    useBoard(plainBoard());
    driver.key(letterF, true, 0);
    EXPECT_EQ(driver.played(), 0);
    output.available = true;
    driver.key(letterF, true, 0);
    EXPECT_EQ(driver.played(), 1);
}

TEST_F(KeystrokeDriverTest, pansByTheKeysPlaceOnTheBoardsLayout) {
    useBoard(plainBoard());
    pressAfterPause(letterF);
    const float expected = KeyLayout::pan(letterF, 1.0, layout(LayoutID::macANSI));
    EXPECT_NEAR(panOf(heard()), static_cast<double>(expected), 1e-5);
}

TEST_F(KeystrokeDriverTest, anAssignmentsPanWinsOverThePlace) {
    Board board = plainBoard();
    Assignment assignment;
    assignment.pan = -0.5;
    board.groups[KeyGroup::alphas] = assignment;
    useBoard(board);
    pressAfterPause(letterF);
    EXPECT_NEAR(panOf(heard()), -0.5, 1e-5);
}

TEST_F(KeystrokeDriverTest, aKeyWithoutSoundLeavesTheOutputAsleep) {
    Board board = plainBoard();
    board.releaseByDefault = true;
    board.sounds.push_back(SoundSpec("none", "None", "#000000", StrokeSpec{}, std::nullopt,
                                     SwitchParts{}, Character{}));
    Assignment silent;
    silent.sound = "none";
    board.groups[KeyGroup::alphas] = silent;
    useBoard(board);
    driver.key(letterF, true, 0);
    driver.key(letterF, false, 0);
    EXPECT_EQ(output.startRequests, 0);
    driver.key(space, true, 0);
    EXPECT_EQ(output.startRequests, 1);
    EXPECT_EQ(driver.played(), 1);
}

TEST_F(KeystrokeDriverTest, releasesPlayByAssignmentThenByBoard) {
    const auto playsRelease = [this](ReleaseMode mode, bool byDefault) {
        Board board = plainBoard();
        Assignment assignment;
        assignment.release = mode;
        board.groups[KeyGroup::alphas] = assignment;
        board.releaseByDefault = byDefault;
        useBoard(board);
        const std::int64_t before = driver.played();
        driver.key(letterF, false, 0);
        const bool played = driver.played() > before;
        engine.core().clear();
        return played;
    };
    EXPECT_FALSE(playsRelease(ReleaseMode::inherit, false));
    EXPECT_TRUE(playsRelease(ReleaseMode::inherit, true));
    EXPECT_TRUE(playsRelease(ReleaseMode::on, false));
    EXPECT_FALSE(playsRelease(ReleaseMode::off, true));
}

TEST_F(KeystrokeDriverTest, binauralDelaysTheFarEar) {
    Board board = plainBoard();
    Assignment right;
    right.pan = 1.0;
    board.groups[KeyGroup::alphas] = right;
    // Full right: the left ear is far, but its gain is zero; half right hears both.
    right.pan = 0.5;
    board.groups[KeyGroup::alphas] = right;
    useBoard(board, true);
    pressAfterPause(letterF);
    const auto block = output.render(128, 0);
    EXPECT_GT(block.right[0], 0.0f);
    // The sample is constant from its first frame, so the far ear starts with what lies before it.
    EXPECT_LT(std::abs(block.left[1] / block.right[1]),
              std::abs(block.left[100] / block.right[100]));
}

TEST_F(KeystrokeDriverTest, aBinauralReleaseIsThisVoiceToTheLastBit) {
    Board board = plainBoard();
    board.releaseByDefault = true;
    useBoard(board, true);
    driver.key(letterF, false, 0);
    const auto block = output.render(512, 0);

    const float pan = KeyLayout::pan(letterF, 1.0, layout(LayoutID::macANSI));
    SamplerCore core(48000.0, 16);
    core.play(bank->pool(VoiceBank::releaseKey("keys")).front(), 0.8F, pan,
              KeyLayout::rate(letterF), 0, VoiceStage::binaural(pan, 48000.0));
    std::vector<float> left(512);
    std::vector<float> right(512);
    core.render(512, left.data(), right.data(), 0, 0);
    EXPECT_EQ(block.left, left);
    EXPECT_EQ(block.right, right);
}

TEST_F(KeystrokeDriverTest, aVoiceKnowsWhenItsKeyWasPressed) {
    Latency::reset();
    useBoard(plainBoard());
    driver.key(letterF, true, 5'000'000);
    output.render(128, 7'000'000);
    EXPECT_EQ(Latency::lastMillis(), 2.0);
    Latency::reset();
}

TEST_F(KeystrokeDriverTest, refusesWhatCannotBePlayedAndSaysSoOnce) {
    const auto pressWith = [this](double gainDb, double pitch, std::optional<double> pan) {
        Board board = plainBoard();
        Assignment assignment;
        assignment.gainDb = gainDb;
        assignment.pitch = pitch;
        assignment.pan = pan;
        board.groups[KeyGroup::alphas] = assignment;
        useBoard(board);
        pressAfterPause(letterF);
    };
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    pressWith(1e300, 0.0, std::nullopt);
    pressWith(nan, 0.0, std::nullopt);
    pressWith(0.0, 100.0, std::nullopt);
    pressWith(0.0, -100.0, std::nullopt);
    pressWith(0.0, nan, std::nullopt);
    pressWith(0.0, 0.0, std::numeric_limits<double>::infinity());
    EXPECT_EQ(driver.played(), 0);
    EXPECT_THAT(problems, ElementsAre(HasSubstr("gainDb"), HasSubstr("pitch"), HasSubstr("pan")));
    pressWith(0.0, 60.0, std::nullopt);
    EXPECT_EQ(driver.played(), 1);
    // Six octaves up and down, of which shape and detune take or give less than half a semitone.
    pressWith(0.0, 72.6, std::nullopt);
    pressWith(0.0, -72.6, std::nullopt);
    EXPECT_EQ(driver.played(), 1);
    pressWith(0.0, 71.4, std::nullopt);
    pressWith(0.0, -71.4, std::nullopt);
    EXPECT_EQ(driver.played(), 3);
    EXPECT_EQ(problems.size(), 3u);
}

TEST_F(KeystrokeDriverTest, sixOctavesUpAndDownAreStillPlayed) {
    constexpr std::int64_t inTune = 37;
    ASSERT_EQ(KeyLayout::rate(inTune), 1.0F);
    for (const double pitch : {72.0, -72.0}) {
        Board board = plainBoard();
        board.releaseByDefault = true;
        Assignment assignment;
        assignment.pitch = pitch;
        board.groups[KeyGroup::alphas] = assignment;
        useBoard(board);
        driver.key(inTune, false, 0);
    }
    EXPECT_EQ(driver.played(), 2);
}

TEST(PlaySettings, binauralNeedsTheDeskAndTheEars) {
    EXPECT_TRUE(wantsBinaural(Placement::desk, OutputKind::headphones, false));
    EXPECT_FALSE(wantsBinaural(Placement::desk, OutputKind::speakers, true));
    EXPECT_TRUE(wantsBinaural(Placement::desk, OutputKind::automatic, true));
    EXPECT_FALSE(wantsBinaural(Placement::desk, OutputKind::automatic, false));
    for (const OutputKind kind :
         {OutputKind::headphones, OutputKind::speakers, OutputKind::automatic}) {
        EXPECT_FALSE(wantsBinaural(Placement::close, kind, true));
    }
}

TEST_F(KeystrokeDriverTest, saysHowAPressSounds) {
    Board board = plainBoard();
    useBoard(board);
    const Strike plain = driver.key(letterF, true, 0);
    EXPECT_GT(plain.loudness, 0.0F);
    EXPECT_LE(plain.loudness, 1.0F);
    EXPECT_NE(plain.pan, 0.0F);
    EXPECT_EQ(driver.key(letterF, false, 0).loudness, 0.0F) << "only presses are shown";
    board.groups[KeyGroup::alphas].gainDb = -12.0;
    useBoard(board);
    EXPECT_LT(driver.key(letterF, true, 0).loudness, plain.loudness / 2);
    useBoard(board, false, true);
    EXPECT_EQ(driver.key(letterF, true, 0).loudness, 0.0F);
}

} // namespace
} // namespace vornic
