// How loud, how fast and how hard a key is struck.

#include "VornicCore/keys/KeyLayout.h"
#include "tests/Vornic/typing/KeystrokeFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace vornic {
namespace {

class KeystrokeShapeTest : public KeystrokeFixture {};

TEST_F(KeystrokeShapeTest, aStabilisedKeyPlaysItsOwnPool) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    useBoard(board);
    pressAfterPause(space);
    // Medium and stabilised: 0.012 times a gain within the shape's 30 per cent.
    const double level = gainOf(heard(), 0.012f);
    EXPECT_GT(level, 0.9);
    EXPECT_LT(level, 1.1);
}

TEST_F(KeystrokeShapeTest, aThirdOfTheShapesGainReachesTheVoice) {
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

TEST_F(KeystrokeShapeTest, halfOfTheShapesRateReachesTheVoice) {
    useBoard(plainBoard());
    SplitMix64 twin(42);
    for (int key = 0; key < 20; ++key) {
        pressAfterPause(letterF);
        const StrokeShape shape = TypingDynamics::shape(TypingDynamics{}.speed(), true, twin);
        twin.next(1); // the pick
        const double share = (static_cast<double>(shape.rate) - 1.0) * 0.5 + 1.0;
        const auto detune = static_cast<double>(KeyLayout::rate(letterF));
        EXPECT_NEAR(heardRate(), detune * share, 6e-4);
    }
}

TEST_F(KeystrokeShapeTest, everyKeyHasItsDetuneAndTheAssignmentsPitch) {
    Board board = plainBoard();
    board.releaseByDefault = true;
    for (const double pitch : {0.0, 12.0, -7.0}) {
        Assignment assignment;
        assignment.pitch = pitch;
        board.groups[KeyGroup::alphas] = assignment;
        useBoard(board);
        for (const std::int64_t key : {0, 3, 12, 46}) {
            driver.key(key, false, 0);
            const double rate = static_cast<double>(KeyLayout::rate(key)) * std::exp2(pitch / 12.0);
            EXPECT_NEAR(heardRate() / rate, 1.0, 6e-4) << key << " at " << pitch;
        }
    }
}

TEST_F(KeystrokeShapeTest, gainOfTheAssignmentIsInDecibels) {
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

TEST_F(KeystrokeShapeTest, aGainForEveryKeyCountsForPressesAndReleases) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    board.releaseByDefault = true;
    useBoard(board, false, false, 0.1);
    pressAfterPause(letterF);
    const double level = gainOf(heard(), 0.002f);
    EXPECT_GT(level, 0.09);
    EXPECT_LT(level, 0.11);
    output.render(9600, 0);
    driver.key(letterF, false, 0);
    EXPECT_NEAR(gainOf(heard(), 0.02f), 0.08, 1e-5);
}

TEST_F(KeystrokeShapeTest, aFixedSensitivityOfZeroIsAlwaysMedium) {
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

TEST_F(KeystrokeShapeTest, fastTypingStrikesSoftlyAndSlowTypingHard) {
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

TEST_F(KeystrokeShapeTest, theVelocityFollowsThePaceAsSteeplyAsTheBoardIsSensitive) {
    // Slowness is 0 at 80 ms a key and 1 at 350; hard begins beyond 0.66, medium at 0.34.
    const auto pace = [](double slowness) { return 0.08 + 0.27 * slowness; };
    Board board = plainBoard();
    for (const double sensitivity : {1.0, 0.5, 7.0}) {
        board.feel.speedSensitivity = sensitivity;
        useBoard(board);
        const double reach = 0.16 / 1.6 / std::min(sensitivity, 1.0);
        EXPECT_EQ(velocityAtPace(pace(0.5 + reach + 0.01)), Velocity::hard) << sensitivity;
        EXPECT_EQ(velocityAtPace(pace(0.5 + reach - 0.01)), Velocity::medium) << sensitivity;
        EXPECT_EQ(velocityAtPace(pace(0.5 - reach + 0.01)), Velocity::medium) << sensitivity;
        EXPECT_EQ(velocityAtPace(pace(0.5 - reach - 0.01)), Velocity::soft) << sensitivity;
    }
    board.feel.speedSensitivity = -3.0;
    useBoard(board);
    EXPECT_EQ(velocityAtPace(0.35), Velocity::medium);
}

TEST_F(KeystrokeShapeTest, keyUpsLeaveThePaceAndTheDraws) {
    Board board = plainBoard();
    board.feel.speedSensitivity = 0.0;
    useBoard(board);
    TypingDynamics dynamics;
    SplitMix64 twin(42);
    for (int key = 0; key < 20; ++key) {
        clock.advance(0.2);
        driver.key(letterF, true, 0);
        const StrokeShape shape = dynamics.down(clock.seconds(), twin);
        twin.next(1); // the pick
        EXPECT_NEAR(gainOf(heard(), 0.002f), (static_cast<double>(shape.gain) - 1.0) * 0.3 + 1.0,
                    1e-4);
        engine.core().clear();
        clock.advance(0.05);
        driver.key(letterF, false, 0);
    }
}

TEST_F(KeystrokeShapeTest, releasesAreQuieterAndLeaveTheDynamics) {
    Board board = plainBoard();
    board.releaseByDefault = true;
    useBoard(board);
    driver.key(letterF, false, 0);
    EXPECT_NEAR(gainOf(heard(), 0.02f), 0.8, 1e-5);
}

TEST_F(KeystrokeShapeTest, equalSeedsPickEqually) {
    const auto picks = [this](std::uint64_t seed) {
        auto fresh = std::make_shared<VoiceBank>();
        std::vector<std::vector<float>> variations;
        for (int variation = 1; variation <= 8; ++variation) {
            variations.emplace_back(512, 0.001f * static_cast<float>(variation));
        }
        fresh->add(VoiceBank::key("keys", false, Velocity::medium), variations);
        Board board = plainBoard();
        board.feel.speedSensitivity = 0.0;
        KeystrokeDriver seeded(engine, clock, seed, [](const std::string&) {});
        auto settings = std::make_shared<PlaySettings>();
        settings->played.board = std::make_shared<const Board>(board);
        settings->played.bank = fresh;
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

} // namespace
} // namespace vornic
