#include "Vornic/recording/OwnSound.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

FinishedImport finished(bool withReleases) {
    FinishedImport result;
    result.name = "My keyboard";
    result.samples = {{"user/1", "a", LayerPart::bottomOut, "Yours", false},
                      {"user/2", "b", LayerPart::bottomOut, "Yours", false}};
    if (withReleases) {
        result.releases = {{"user/3", "c", LayerPart::topOut, "Yours", false}};
    }
    return result;
}

TEST(OwnSound, listsTheSamplesInOneLayerThatNothingShapes) {
    const SoundSpec sound = soundOf(finished(false));
    EXPECT_EQ(sound.name, "My keyboard");
    ASSERT_EQ(sound.press.layers.size(), 1U);
    EXPECT_EQ(sound.press.layers[0].part, LayerPart::bottomOut);
    EXPECT_EQ(sound.press.layers[0].samples, (std::vector<std::string>{"user/1", "user/2"}));
    EXPECT_EQ(sound.press.chain, ChainParams::neutral());
    EXPECT_EQ(sound.release, std::nullopt);
}

TEST(OwnSound, hasAReleaseWhereReleasesWereKept) {
    const SoundSpec sound = soundOf(finished(true));
    ASSERT_TRUE(sound.release);
    EXPECT_EQ(sound.release->layers[0].samples, std::vector<std::string>{"user/3"});
}

TEST(OwnSound, hasAnIdOfItsOwn) {
    EXPECT_NE(soundOf(finished(false)).id, soundOf(finished(false)).id);
}

TEST(OwnSound, everyKeyPlaysTheSoundThatIsToPlayEverywhere) {
    const SoundSpec first = soundOf(finished(false));
    const SoundSpec own = soundOf(finished(false));
    Board board("b", "B", "", "#FFFFFF", {}, {first, own}, {});
    board.groups[KeyGroup::space] = {.sound = first.id, .gainDb = -3};
    board.keys["0"] = {.sound = first.id};
    board.keys["1"] = {.sound = first.id, .pitch = 2};
    playEverywhere(board, own.id);
    for (std::int64_t code = 0; code < 128; ++code) {
        EXPECT_EQ(board.resolve(code)->sound->id, own.id) << code;
    }
    EXPECT_EQ(board.groups[KeyGroup::space].gainDb, -3);
    EXPECT_FALSE(board.keys.contains("0"));
    EXPECT_EQ(board.keys.at("1").pitch, 2);
}

TEST(OwnSound, aSoundOfAnotherBoardPlaysNowhere) {
    const SoundSpec first = soundOf(finished(false));
    Board board("b", "B", "", "#FFFFFF", {}, {first}, {});
    const Board before = board;
    playEverywhere(board, "another");
    EXPECT_EQ(board, before);
}

} // namespace
} // namespace vornic
