#include "Vornic/typing/KeystrokeDriver.h"

#include "VornicCore/keys/KeyLayout.h"
#include "VornicCore/keys/KeyboardLayout.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/ManualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace vornic {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::int64_t space = 49;
constexpr std::int64_t letterF = 3;

/// A board of one sound "keys" that every group plays.
Board plainBoard() {
    Board board("test", "Test", "", "#000000", BuildParts{}, {}, {});
    board.sounds.push_back(SoundSpec("keys", "Keys", "#000000", StrokeSpec{}, std::nullopt,
                                     SwitchParts{}, Character{}));
    return board;
}

/// What one voice of a constant sample comes out as, before room, limiter and volume.
struct Heard {
    float left = 0.0f;
    float right = 0.0f;
};

class KeystrokeDriverTest : public ::testing::Test {
  protected:
    KeystrokeDriverTest() {
        // Every pool holds one constant of its own, so that the output tells which one was picked.
        const auto constant = [](float value) {
            return std::vector<std::vector<float>>{std::vector<float>(4800, value)};
        };
        auto bank = std::make_shared<VoiceBank>();
        for (const Velocity velocity : {Velocity::soft, Velocity::medium, Velocity::hard}) {
            const float step = 0.001f * static_cast<float>(1 + static_cast<int>(velocity));
            bank->add(VoiceBank::key("keys", false, velocity), constant(step));
            bank->add(VoiceBank::key("keys", true, velocity), constant(0.01f + step));
        }
        bank->add(VoiceBank::releaseKey("keys"), constant(0.02f));
        engine.setBank(bank);
    }

    void useBoard(const Board& board, bool binaural = false, bool silenced = false) {
        auto settings = std::make_shared<PlaySettings>();
        settings->board = std::make_shared<const Board>(board);
        settings->binaural = binaural;
        settings->silenced = silenced;
        driver.apply(settings);
    }

    /// Renders one block of the raw engine and gives the 65th frame, well inside every voice.
    Heard heard() {
        const auto block = output.render(128, 0);
        return {block.left[64], block.right[64]};
    }

    /// Types `code` slowly enough that every stroke is the first after a pause, until the draw of
    /// its shape is known, and gives the level of the voice without shape and pan.
    void pressAfterPause(std::int64_t code) {
        clock.advance(10.0);
        driver.key(code, true, 0);
    }

    FakeOutput output;
    ManualClock clock;
    SoundEngine engine{output,
                       clock,
                       [](const std::function<void()>& work) { work(); },
                       {.idleLimits = {}, .raw = true}};
    std::vector<std::string> problems;
    KeystrokeDriver driver{engine, clock, 42,
                           [this](const std::string& problem) { problems.push_back(problem); }};
};

/// Inverts the pan law: the gain and the pan that made these two levels of a constant.
double gainOf(Heard heard, float constant) {
    return std::hypot(static_cast<double>(heard.left), static_cast<double>(heard.right)) /
           (std::numbers::sqrt2 * static_cast<double>(constant));
}
double panOf(Heard heard) {
    return std::atan2(static_cast<double>(heard.right), static_cast<double>(heard.left)) * 4.0 /
               std::numbers::pi -
           1.0;
}

TEST_F(KeystrokeDriverTest, isSilentWithoutABankAndQueuesNothing) {
    engine.setBank(nullptr);
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

TEST_F(KeystrokeDriverTest, aStabilisedKeyPlaysItsOwnPool) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    useBoard(board);
    pressAfterPause(space);
    // Medium and stabilised: 0.012 times a gain within the shape's 30 per cent.
    const double level = gainOf(heard(), 0.012f);
    EXPECT_GT(level, 0.9);
    EXPECT_LT(level, 1.1);
}

TEST_F(KeystrokeDriverTest, aThirdOfTheShapesGainReachesTheVoice) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    useBoard(board);
    SplitMix64 twin(42);
    for (int key = 0; key < 20; ++key) {
        pressAfterPause(letterF);
        const StrokeShape shape = TypingDynamics::shape(TypingDynamics{}.speed(), true, twin);
        twin.next(1); // the pick
        const double expected = (static_cast<double>(shape.gain) - 1.0) * 0.3 + 1.0;
        EXPECT_NEAR(gainOf(heard(), 0.002f), expected, 1e-4);
        engine.core().clear();
    }
}

TEST_F(KeystrokeDriverTest, gainOfTheAssignmentIsInDecibels) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    Assignment assignment;
    assignment.gainDb = -20.0;
    board.groups[KeyGroup::alphas] = assignment;
    useBoard(board);
    pressAfterPause(letterF);
    const double level = gainOf(heard(), 0.002f);
    EXPECT_GT(level, 0.09);
    EXPECT_LT(level, 0.11);
}

TEST_F(KeystrokeDriverTest, aGainForEveryKeyCountsForPressesAndReleases) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    board.releaseByDefault = true;
    auto settings = std::make_shared<PlaySettings>();
    settings->board = std::make_shared<const Board>(board);
    settings->gain = 0.1;
    driver.apply(settings);
    pressAfterPause(letterF);
    const double level = gainOf(heard(), 0.002f);
    EXPECT_GT(level, 0.09);
    EXPECT_LT(level, 0.11);
    output.render(9600, 0);
    driver.key(letterF, false, 0);
    EXPECT_NEAR(gainOf(heard(), 0.02f), 0.08, 1e-5);
}

TEST_F(KeystrokeDriverTest, aFixedSensitivityOfZeroIsAlwaysMedium) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    useBoard(board);
    for (int key = 0; key < 30; ++key) {
        clock.advance(0.05);
        driver.key(letterF, true, 0);
        EXPECT_NEAR(gainOf(heard(), 0.002f), 1.0, 0.2);
        engine.core().clear();
    }
}

TEST_F(KeystrokeDriverTest, fastTypingStrikesSoftlyAndSlowTypingHard) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.25;
    useBoard(board);
    for (int key = 0; key < 40; ++key) {
        clock.advance(0.06);
        driver.key(letterF, true, 0);
        engine.core().clear();
    }
    clock.advance(0.06);
    driver.key(letterF, true, 0);
    EXPECT_NEAR(gainOf(heard(), 0.001f), 0.9, 0.12);
    engine.core().clear();

    for (int key = 0; key < 40; ++key) {
        clock.advance(1.0);
        driver.key(letterF, true, 0);
        engine.core().clear();
    }
    clock.advance(1.0);
    driver.key(letterF, true, 0);
    EXPECT_NEAR(gainOf(heard(), 0.003f), 1.0, 0.12);
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

TEST_F(KeystrokeDriverTest, releasesAreQuieterAndLeaveTheDynamics) {
    Board board = plainBoard();
    board.releaseByDefault = true;
    useBoard(board);
    driver.key(letterF, false, 0);
    EXPECT_NEAR(gainOf(heard(), 0.02f), 0.8, 1e-5);
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
    EXPECT_EQ(problems.size(), 3u);
}

TEST_F(KeystrokeDriverTest, equalSeedsPickEqually) {
    const auto picks = [this](std::uint64_t seed) {
        auto bank = std::make_shared<VoiceBank>();
        std::vector<std::vector<float>> variations;
        for (int variation = 1; variation <= 8; ++variation) {
            variations.emplace_back(512, 0.001f * static_cast<float>(variation));
        }
        bank->add(VoiceBank::key("keys", false, Velocity::medium), variations);
        engine.setBank(bank);
        Board board = plainBoard();
        board.feel.speedSensitivity = 0.0;
        KeystrokeDriver seeded(engine, clock, seed, [](const std::string&) {});
        auto settings = std::make_shared<PlaySettings>();
        settings->board = std::make_shared<const Board>(board);
        seeded.apply(settings);
        std::vector<long> found;
        for (int key = 0; key < 40; ++key) {
            clock.advance(10.0);
            seeded.key(letterF, true, 0);
            found.push_back(std::lround(gainOf(heard(), 0.001f)));
            engine.core().clear();
        }
        return found;
    };
    const auto first = picks(1);
    EXPECT_EQ(first, picks(1));
    EXPECT_NE(first, picks(2));
    const auto [least, most] = std::ranges::minmax(first);
    EXPECT_EQ(least, 1);
    EXPECT_EQ(most, 8);
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

} // namespace
} // namespace vornic
