#include "VornicCore/render/BoardLoudness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace vornic {
namespace {

std::vector<float> stroke(float level) {
    std::vector<float> result(4800);
    for (std::size_t frame = 0; frame < result.size(); ++frame) {
        const auto time = static_cast<float>(frame);
        result[frame] = level * std::exp(-time / 960.0F) * std::sin(time * 0.2F);
    }
    return result;
}

Board boardOf(std::vector<std::string> ids) {
    std::vector<SoundSpec> sounds;
    for (const std::string& id : ids) {
        sounds.emplace_back(id, id, "#000000", StrokeSpec(), std::nullopt, SwitchParts(),
                            Character());
    }
    return Board("b", "B", "", "#000000", {}, std::move(sounds), {});
}

void add(VoiceBank& bank, const std::string& sound, float level) {
    bank.add(VoiceBank::key(sound, false, Velocity::medium), {stroke(level)});
    bank.add(VoiceBank::key(sound, true, Velocity::medium), {stroke(level)});
}

TEST(BoardLoudness, isThatOfTheStrokesThatKeysPlay) {
    VoiceBank quiet;
    VoiceBank loud;
    add(quiet, "a", 0.1F);
    add(loud, "a", 0.2F);
    // A sound that no key plays is not heard.
    add(loud, "b", 0.9F);
    const Board board = boardOf({"a", "b"});
    EXPECT_NEAR(boardLoudness(board, loud).value() - boardLoudness(board, quiet).value(),
                20.0 * std::log10(2.0), 0.01);
}

TEST(BoardLoudness, countsTheGainsOfKeysAndGroups) {
    VoiceBank bank;
    add(bank, "a", 0.1F);
    const Board plain = boardOf({"a"});
    Board louder = plain;
    for (const KeyGroup group : allCases<KeyGroup>()) {
        louder.groups[group].gainDb = 6;
    }
    EXPECT_NEAR(boardLoudness(louder, bank).value() - boardLoudness(plain, bank).value(), 6.0,
                1e-9);
    Board oneKey = plain;
    oneKey.keys["0"].gainDb = 6;
    const double more = boardLoudness(oneKey, bank).value() - boardLoudness(plain, bank).value();
    EXPECT_GT(more, 0.0);
    EXPECT_LT(more, 0.5);
}

TEST(BoardLoudness, whereNothingSoundsThereIsNone) {
    EXPECT_FALSE(boardLoudness(boardOf({}), VoiceBank()));
    EXPECT_FALSE(boardLoudness(boardOf({"a"}), VoiceBank()));
    Board mute = boardOf({"a"});
    for (const KeyGroup group : allCases<KeyGroup>()) {
        mute.groups[group].gainDb = -1e6;
    }
    VoiceBank bank;
    add(bank, "a", 0.1F);
    EXPECT_FALSE(boardLoudness(mute, bank));
}

TEST(MatchingGain, bringsTheOneToTheOtherWithinReason) {
    EXPECT_NEAR(matchingGain(-30.0, -24.0), std::pow(10.0, 6.0 / 20.0), 1e-12);
    EXPECT_NEAR(matchingGain(-24.0, -30.0), std::pow(10.0, -6.0 / 20.0), 1e-12);
    EXPECT_NEAR(matchingGain(-90.0, -20.0), std::pow(10.0, 12.0 / 20.0), 1e-12);
    EXPECT_NEAR(matchingGain(-20.0, -90.0), std::pow(10.0, -12.0 / 20.0), 1e-12);
    EXPECT_EQ(matchingGain(std::nullopt, -20.0), 1.0);
    EXPECT_EQ(matchingGain(-20.0, std::nullopt), 1.0);
}

} // namespace
} // namespace vornic
