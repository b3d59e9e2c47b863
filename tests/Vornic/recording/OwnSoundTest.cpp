#include "Vornic/recording/StrokeImport.h"

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

} // namespace
} // namespace vornic
