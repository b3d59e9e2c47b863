#include "Vornic/app/SimpleTweaks.h"

#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/dsp/Biquad.h"
#include "VornicCore/render/Renderer.h"
#include "tests/VornicCore/render/MapSource.h"
#include "tests/VornicCore/render/TestStroke.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vornic {
namespace {

using DSP::Biquad;

Board testBoard() {
    return boardOf({plainSound({"keys"}), plainSound({"keys"})});
}

/// What a key of the board sounds like with these tweaks.
std::vector<float> rendered(const SimpleTweaks& tweaks, Board board = testBoard()) {
    board = tweaked(board, tweaks);
    const MapSource source({{"keys", noiseStroke(7)}});
    return Renderer::render(RenderJob(board.sounds.front(), board, false, false), Velocity::medium,
                            0, source, 1);
}

double level(const std::vector<float>& samples) {
    double sum = 0;
    for (const double sample : samples) {
        sum += sample * sample;
    }
    return 10 * std::log10(sum);
}

/// How loud a sound is around `frequency`, in dB against the middle around 1 kHz.
double around(double frequency, const std::vector<float>& samples) {
    const auto band = [&](double centre) {
        std::vector<float> filtered = samples;
        Biquad(Biquad::Kind::bandPass, centre, 1, 0).run(filtered);
        return level(filtered);
    };
    return band(frequency) - band(1000);
}
double lows(const std::vector<float>& samples) {
    return around(100, samples);
}
double highs(const std::vector<float>& samples) {
    return around(5000, samples);
}

/// How loud the first ten milliseconds of a sound are against the rest, in dB.
double attack(const std::vector<float>& samples) {
    return level({samples.begin(), samples.begin() + 480}) -
           level({samples.begin() + 480, samples.end()});
}

TEST(SimpleTweaks, withoutAnyTheBoardIsTheSame) {
    const Board board = testBoard();
    EXPECT_EQ(tweaked(board, {}), board);
}

// A difference of one decibel between two bands of a sound is about the least that one hears.

TEST(SimpleTweaks, deeperBringsTheLowsOutAndLighterTakesThemAway) {
    const double plain = lows(rendered({}));
    EXPECT_GT(lows(rendered({.deeper = 1})), plain + 2);
    EXPECT_GT(lows(rendered({.deeper = 0.5})), plain + 1);
    EXPECT_LT(lows(rendered({.deeper = -1})), plain - 2);
}

TEST(SimpleTweaks, crisperBringsTheHighsAndTheAttackOutAndSofterTakesThemAway) {
    const std::vector<float> plain = rendered({});
    const std::vector<float> crisp = rendered({.crisper = 1});
    const std::vector<float> soft = rendered({.crisper = -1});
    EXPECT_GT(attack(crisp), attack(plain) + 1.5);
    EXPECT_LT(attack(soft), attack(plain) - 1.5);
    EXPECT_GT(highs(crisp), highs(plain) + 1);
    EXPECT_LT(highs(soft), highs(plain) - 1);
}

TEST(SimpleTweaks, theFeelsDifferByEar) {
    const std::vector<float> linear = rendered({.feel = Feel::linear});
    const std::vector<float> tactile = rendered({.feel = Feel::tactile});
    const std::vector<float> clicky = rendered({.feel = Feel::clicky});
    EXPECT_GT(attack(tactile), attack(linear) + 1);
    EXPECT_GT(highs(clicky), highs(linear) + 1);
    EXPECT_GT(highs(clicky), highs(tactile) + 1);
}

TEST(SimpleTweaks, theFeelThatABoardHasChangesNothing) {
    Board board = testBoard();
    for (SoundSpec& sound : board.sounds) {
        sound.switchParts.type = SwitchType::tactile;
        sound.recordedAs.type = SwitchType::tactile;
    }
    EXPECT_EQ(tweaked(board, {.feel = Feel::tactile}), board);
    EXPECT_LT(attack(rendered({.feel = Feel::linear}, board)), attack(rendered({}, board)) - 0.8);
}

TEST(SimpleTweaks, everySoundOfTheBoardTakesTheFeel) {
    for (const SoundSpec& sound : tweaked(testBoard(), {.feel = Feel::clicky}).sounds) {
        EXPECT_EQ(sound.switchParts.type, SwitchType::clicky);
        EXPECT_EQ(sound.recordedAs.type, SwitchType::linear);
    }
}

TEST(SimpleTweaks, addToWhatTheBoardHasAlready) {
    Board board = testBoard();
    board.character = {.depth = 0.25, .snap = -0.25, .ring = 0.5, .size = -0.5};
    EXPECT_EQ(tweaked(board, {.deeper = 0.5, .crisper = 0.5}).character,
              (Character{.depth = 0.75, .snap = 0.25, .ring = 0.5, .size = -0.5 + 0.3 * 0.5}));
}

TEST(SimpleTweaks, valuesBeyondTheRangeCountAsItsEnds) {
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(tweaked(testBoard(), {.deeper = 9, .crisper = -9}).character,
              (Character{.depth = 1, .snap = -1, .size = 0.3}));
    EXPECT_EQ(tweaked(testBoard(), {.deeper = nothing, .crisper = nothing}).character, Character{});
}

TEST(SimpleTweaks, areKeptUnderTheirOwnNames) {
    const SimpleTweaks tweaks{.deeper = 0.5, .crisper = -1, .feel = Feel::clicky};
    EXPECT_EQ(encodeJson(tweaks),
              "{\n  \"crisper\": -1,\n  \"deeper\": 0.5,\n  \"feel\": \"clicky\"\n}");
    EXPECT_EQ(decodeJson<SimpleTweaks>(R"({"deeper": 0.5, "crisper": -1, "feel": "clicky"})"),
              tweaks);
    EXPECT_EQ(decodeJson<SimpleTweaks>(R"({"deeper": 0, "crisper": 0})"), SimpleTweaks{});
}

} // namespace
} // namespace vornic
