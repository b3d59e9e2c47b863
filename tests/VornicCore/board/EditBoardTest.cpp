#include "VornicCore/board/EditBoard.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

SoundSpec soundNamed(const std::string& id) {
    SoundSpec sound(id, id, "#102030",
                    StrokeSpec({LayerSpec(LayerPart::click, {id + "/1", id + "/2"}, 3, -2, 1),
                                LayerSpec(LayerPart::rattle, {id + "/3"}, 0, 0, 0)}),
                    {}, {}, {});
    sound.switchParts.type = SwitchType::clicky;
    sound.recordedAs.type = SwitchType::tactile;
    return sound;
}

Board boardOf(const std::vector<std::string>& ids) {
    Board board;
    board.colorHex = "#ABCDEF";
    for (const std::string& id : ids) {
        board.sounds.push_back(soundNamed(id));
    }
    return board;
}

std::vector<std::string> idsOf(const Board& board) {
    std::vector<std::string> ids;
    for (const SoundSpec& sound : board.sounds) {
        ids.push_back(sound.id);
    }
    return ids;
}

TEST(EditBoard, aNewSoundHasTheFirstRecordingsAndNothingThatShapesThem) {
    SoundSpec like = soundNamed("a");
    like.press.chain.attackDb = 4;
    like.character.depth = 0.5;
    like.release = StrokeSpec({LayerSpec(LayerPart::click, {"up"}, 0, 0, 0)});
    const SoundSpec sound = EditBoard::newSound(boardOf({"a"}), &like, "New");
    EXPECT_NE(sound.id, like.id);
    EXPECT_EQ(sound.name, "New");
    EXPECT_EQ(sound.colorHex, like.colorHex);
    ASSERT_EQ(sound.press.layers.size(), 1U);
    EXPECT_EQ(sound.press.layers[0].part, LayerPart::bottomOut);
    EXPECT_EQ(sound.press.layers[0].samples, like.press.layers[0].samples);
    EXPECT_EQ(sound.press.layers[0].gainDb, 0);
    EXPECT_EQ(sound.press.chain, ChainParams::neutral());
    ASSERT_TRUE(sound.release);
    EXPECT_EQ(sound.release->layers[0].part, LayerPart::topOut);
    EXPECT_EQ(sound.release->layers[0].samples, std::vector<std::string>{"up"});
    EXPECT_EQ(sound.switchParts, like.recordedAs) << "as it was recorded: nothing is changed";
    EXPECT_EQ(sound.recordedAs, like.recordedAs);
    EXPECT_EQ(sound.character, Character());
}

TEST(EditBoard, aNewSoundOfNothingIsSilentInTheBoardsColour) {
    const SoundSpec sound = EditBoard::newSound(boardOf({}), nullptr, "New");
    EXPECT_EQ(sound.colorHex, "#ABCDEF");
    ASSERT_EQ(sound.press.layers.size(), 1U);
    EXPECT_TRUE(sound.press.layers[0].samples.empty());
    EXPECT_FALSE(sound.release);
}

TEST(EditBoard, aCopyDiffersInIdAndNameOnly) {
    const SoundSpec first = soundNamed("a");
    SoundSpec copy = EditBoard::copyOf(first, "b");
    EXPECT_NE(copy.id, first.id);
    EXPECT_EQ(copy.name, "b");
    copy.id = first.id;
    copy.name = first.name;
    EXPECT_EQ(copy, first);
}

TEST(EditBoard, aSoundIsAddedBehindAnotherOrAtTheEnd) {
    Board board = boardOf({"a", "b"});
    EditBoard::addSound(board, soundNamed("c"), "a");
    EXPECT_EQ(idsOf(board), (std::vector<std::string>{"a", "c", "b"}));
    EditBoard::addSound(board, soundNamed("d"));
    EditBoard::addSound(board, soundNamed("e"), "unknown");
    EditBoard::addSound(board, soundNamed("f"), "e");
    EXPECT_EQ(idsOf(board), (std::vector<std::string>{"a", "c", "b", "d", "e", "f"}));
}

TEST(EditBoard, aRemovedSoundLeavesItsKeysToWhatLiesBelow) {
    Board board = boardOf({"a", "b", "c"});
    board.groups[KeyGroup::space] = {.sound = "b", .gainDb = -3};
    board.groups[KeyGroup::enter] = {.sound = "c"};
    board.keys["0"] = {.sound = "b"};
    board.keys["1"] = {.sound = "b", .pitch = 2};
    board.keys["2"] = {.sound = "c"};
    EXPECT_EQ(EditBoard::removeSound(board, "b"), "c") << "what took its place";
    EXPECT_EQ(idsOf(board), (std::vector<std::string>{"a", "c"}));
    EXPECT_EQ(board.groups[KeyGroup::space], (Assignment{.gainDb = -3}));
    EXPECT_EQ(board.groups[KeyGroup::enter].sound, "c");
    EXPECT_FALSE(board.keys.contains("0")) << "it overrides nothing any more";
    EXPECT_EQ(board.keys.at("1"), (Assignment{.pitch = 2}));
    EXPECT_EQ(board.keys.at("2").sound, "c");
    EXPECT_EQ(EditBoard::removeSound(board, "c"), "a") << "the last one of the list";
}

TEST(EditBoard, theLastSoundAndAnUnknownOneStay) {
    Board board = boardOf({"a", "b"});
    const Board before = board;
    EXPECT_EQ(EditBoard::removeSound(board, "x"), std::nullopt);
    EXPECT_EQ(board, before);
    EXPECT_TRUE(EditBoard::canRemoveSound(board));
    board.sounds.pop_back();
    EXPECT_FALSE(EditBoard::canRemoveSound(board));
    EXPECT_EQ(EditBoard::removeSound(board, "a"), std::nullopt);
    EXPECT_EQ(board.sounds.size(), 1U);
}

TEST(EditBoard, everyKeyPlaysTheSoundThatIsToPlayEverywhere) {
    Board board = boardOf({"a", "b"});
    board.groups[KeyGroup::space] = {.sound = "a", .gainDb = -3};
    board.keys["0"] = {.sound = "a"};
    board.keys["1"] = {.sound = "a", .pitch = 2};
    EXPECT_FALSE(EditBoard::playsEverywhere(board, "b"));
    EditBoard::playEverywhere(board, "b");
    for (std::int64_t code = 0; code < 128; ++code) {
        EXPECT_EQ(board.resolve(code)->sound->id, "b") << code;
    }
    EXPECT_TRUE(EditBoard::playsEverywhere(board, "b"));
    EXPECT_FALSE(EditBoard::playsEverywhere(board, "a"));
    EXPECT_EQ(board.groups[KeyGroup::space].gainDb, -3);
    EXPECT_FALSE(board.keys.contains("0"));
    EXPECT_EQ(board.keys.at("1").pitch, 2);
}

TEST(EditBoard, aSoundOfAnotherBoardPlaysNowhere) {
    Board board = boardOf({"a"});
    const Board before = board;
    EditBoard::playEverywhere(board, "another");
    EXPECT_EQ(board, before);
    EXPECT_FALSE(EditBoard::playsEverywhere(board, "another"));
}

TEST(EditBoard, countsTheDrawnKeysOfEverySound) {
    Board board = boardOf({"a", "b", "c"});
    board.keys["0"] = {.sound = "b"};
    board.keys["1"] = {.sound = "b"};
    const auto keys = EditBoard::keysBySound(board);
    EXPECT_EQ(keys.at("b"), 2);
    EXPECT_GT(keys.at("a"), 60);
    EXPECT_FALSE(keys.contains("c"));
    EXPECT_TRUE(EditBoard::keysBySound(boardOf({})).empty());
}

TEST(EditBoard, aReleaseComesFromThePressAndGoes) {
    SoundSpec sound = soundNamed("a");
    EditBoard::setHasRelease(sound, true);
    ASSERT_TRUE(sound.release);
    EXPECT_EQ(sound.release->layers[0].samples, sound.press.layers[0].samples);
    sound.release->chain.attackDb = 2;
    EditBoard::setHasRelease(sound, true);
    EXPECT_EQ(sound.release->chain.attackDb, 2) << "one that is there stays as it is";
    EditBoard::setHasRelease(sound, false);
    EXPECT_FALSE(sound.release);
}

TEST(EditBoard, layersComeGoAndMove) {
    StrokeSpec stroke = soundNamed("a").press;
    EditBoard::addLayer(stroke, 3);
    ASSERT_EQ(stroke.layers.size(), 3U);
    EXPECT_EQ(stroke.layers[2].samples, stroke.layers[1].samples);
    EXPECT_NE(stroke.layers[2].id, stroke.layers[1].id);
    EditBoard::addLayer(stroke, 3);
    EXPECT_EQ(stroke.layers.size(), 3U) << "there are as many as there may be";

    const std::vector<LayerSpec> before = stroke.layers;
    EditBoard::moveLayer(stroke, 0, 2);
    EXPECT_EQ(stroke.layers, (std::vector{before[1], before[2], before[0]}));
    EditBoard::moveLayer(stroke, 2, 0);
    EXPECT_EQ(stroke.layers, before);
    EditBoard::moveLayer(stroke, 0, 3);
    EditBoard::moveLayer(stroke, -1, 0);
    EXPECT_EQ(stroke.layers, before);

    EditBoard::removeLayer(stroke, 3);
    EditBoard::removeLayer(stroke, -1);
    EXPECT_EQ(stroke.layers, before);
    EditBoard::removeLayer(stroke, 1);
    EXPECT_EQ(stroke.layers, (std::vector{before[0], before[2]}));

    StrokeSpec empty;
    EditBoard::addLayer(empty, 3);
    EXPECT_EQ(empty.layers.size(), 1U);
}

TEST(EditBoard, aRecordingIsChosenOnce) {
    LayerSpec layer(LayerPart::click, {"a"}, 0, 0, 0);
    EditBoard::chooseSamples(layer, {"a", "b"}, true);
    EXPECT_EQ(layer.samples, (std::vector<std::string>{"a", "b"}));
    EditBoard::chooseSamples(layer, {"a", "c"}, false);
    EXPECT_EQ(layer.samples, std::vector<std::string>{"b"});
}

TEST(IsHeard, muteSilencesAndSoloSilencesTheOthers) {
    std::vector<LayerSpec> layers(3);
    EXPECT_TRUE(isHeard(layers[0], layers));
    layers[0].muted = true;
    EXPECT_FALSE(isHeard(layers[0], layers));
    EXPECT_TRUE(isHeard(layers[1], layers));
    layers[1].solo = true;
    EXPECT_TRUE(isHeard(layers[1], layers));
    EXPECT_FALSE(isHeard(layers[2], layers));
    layers[1].muted = true;
    EXPECT_FALSE(isHeard(layers[1], layers)) << "mute wins";
}

} // namespace
} // namespace vornic
