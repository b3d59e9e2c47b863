#include "VornicCore/recordings/RecordedBank.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

LayerSpec layer(std::vector<std::string> samples) {
    return {LayerPart::bottomOut, std::move(samples), 0, 0, 0};
}

Board boardWith(std::vector<LayerSpec> press, std::optional<StrokeSpec> release = std::nullopt) {
    Board board;
    board.sounds = {SoundSpec("s", "S", "#000000", StrokeSpec(std::move(press)), std::move(release),
                              SwitchParts(), Character())};
    return board;
}

// Recordings "1", "2" and so on, of two frames of that value.
std::optional<std::vector<float>> numbered(const std::string& id) {
    if (id == "missing") {
        return std::nullopt;
    }
    return std::vector<float>(2, std::stof(id));
}

// The first frame of each sample of a pool.
std::vector<float> firstFrames(const VoiceBank& bank, const std::string& key) {
    std::vector<float> values;
    for (const Sample& sample : bank.pool(key)) {
        EXPECT_EQ(sample.length, 2);
        values.push_back(*sample.data);
    }
    return values;
}

TEST(RecordedBank, everyPressPoolHoldsAllRecordingsOfTheStroke) {
    const VoiceBank bank = recordedBank(boardWith({layer({"1", "2"}), layer({"3"})}), numbered);
    EXPECT_EQ(bank.pools().size(), 6U);
    for (const char* key : {"s|key|0", "s|key|1", "s|key|2", "s|stab|0", "s|stab|1", "s|stab|2"}) {
        EXPECT_THAT(firstFrames(bank, key), ElementsAre(1, 2, 3)) << key;
    }
}

TEST(RecordedBank, theReleasePoolHoldsTheReleaseStroke) {
    const VoiceBank bank =
        recordedBank(boardWith({layer({"1"})}, StrokeSpec({layer({"8", "9"})})), numbered);
    EXPECT_THAT(firstFrames(bank, "s|release"), ElementsAre(8, 9));
    EXPECT_THAT(firstFrames(bank, "s|key|1"), ElementsAre(1));
}

TEST(RecordedBank, aSoundWithoutAReleaseHasNoReleasePool) {
    const VoiceBank bank = recordedBank(boardWith({layer({"1"})}), numbered);
    EXPECT_FALSE(bank.pools().contains("s|release"));
}

TEST(RecordedBank, mutedLayersGiveNothing) {
    LayerSpec muted = layer({"1"});
    muted.muted = true;
    const VoiceBank bank = recordedBank(boardWith({muted, layer({"2"})}), numbered);
    EXPECT_THAT(firstFrames(bank, "s|key|0"), ElementsAre(2));
}

TEST(RecordedBank, aSoloLayerSilencesTheOthers) {
    LayerSpec solo = layer({"1"});
    solo.solo = true;
    LayerSpec soloAndMuted = layer({"3"});
    soloAndMuted.solo = true;
    soloAndMuted.muted = true;
    const VoiceBank bank = recordedBank(boardWith({layer({"2"}), solo, soloAndMuted}), numbered);
    EXPECT_THAT(firstFrames(bank, "s|key|0"), ElementsAre(1));
}

TEST(RecordedBank, recordingsThatAreMissingAreLeftOut) {
    const VoiceBank bank = recordedBank(boardWith({layer({"missing", "2"})}), numbered);
    EXPECT_THAT(firstFrames(bank, "s|key|0"), ElementsAre(2));
    EXPECT_THAT(recordedBank(boardWith({layer({"missing"})}), numbered).pools(), IsEmpty());
}

TEST(RecordedBank, eachSoundHasItsOwnPools) {
    Board board = boardWith({layer({"1"})});
    board.sounds.push_back(board.sounds.front());
    board.sounds[1].id = "t";
    board.sounds[1].press.layers = {layer({"5"})};
    const VoiceBank bank = recordedBank(board, numbered);
    EXPECT_THAT(firstFrames(bank, "s|key|0"), ElementsAre(1));
    EXPECT_THAT(firstFrames(bank, "t|key|0"), ElementsAre(5));
}

TEST(RecordedBank, aBoardWithoutSoundsGivesAnEmptyBank) {
    EXPECT_THAT(recordedBank(Board(), numbered).pools(), IsEmpty());
}

} // namespace
} // namespace vornic
