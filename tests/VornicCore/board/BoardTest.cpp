#include "VornicCore/board/Board.h"

#include "VornicCore/board/StageSpec.h"

#include <gtest/gtest.h>

#include <limits>

namespace vornic {
namespace {

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyTab = 48;
constexpr std::int64_t keySpace = 49;

SoundSpec soundNamed(const std::string& id) {
    return {id, id, "#000000", {}, {}, {}, {}};
}

Board boardOf(std::vector<std::string> ids) {
    Board board;
    for (const std::string& id : ids) {
        board.sounds.push_back(soundNamed(id));
    }
    return board;
}

TEST(Board, constructorSetsTheDefaults) {
    BuildParts build;
    build.plate = Plate::brass;
    const Board board("id", "name", "detail", "#123456", build, {soundNamed("keys")},
                      {{KeyGroup::space, {.sound = "keys"}}});
    EXPECT_EQ(board.schema, 1);
    EXPECT_EQ(board.id, "id");
    EXPECT_EQ(board.name, "name");
    EXPECT_EQ(board.detail, "detail");
    EXPECT_EQ(board.colorHex, "#123456");
    EXPECT_EQ(board.layout, LayoutID::macANSI);
    EXPECT_EQ(board.build, build);
    EXPECT_EQ(board.recordedBuild, build);
    EXPECT_EQ(board.stabs, (StabParts{StabTuning::tuned, 0.15}));
    EXPECT_EQ(board.character, (Character{0, 0, 0, 0}));
    EXPECT_EQ(board.sounds.size(), 1U);
    EXPECT_EQ(board.groups.size(), 1U);
    EXPECT_TRUE(board.keys.empty());
    EXPECT_EQ(board.feel, (TypingFeel{0.6, 0.5}));
    EXPECT_FALSE(board.releaseByDefault);
    EXPECT_FALSE(board.builtIn);
    EXPECT_TRUE(board.credits.empty());
}

TEST(SoundSpec, constructorSetsTheDefaults) {
    const SwitchParts parts{SwitchType::clicky, Housing::pom, Lube::thick, Spring::long_, true};
    const SoundSpec sound("id", "name", "#abcdef", StrokeSpec(), std::nullopt, parts, {1, 2, 3, 4});
    EXPECT_EQ(sound.switchParts, parts);
    EXPECT_EQ(sound.recordedAs, parts);
    EXPECT_EQ(sound.variations, 12);
    EXPECT_EQ(sound.character, (Character{1, 2, 3, 4}));
    EXPECT_FALSE(sound.release.has_value());
}

TEST(StrokeSpec, constructorAlignsAttacksAndTakesTheNeutralChain) {
    const StrokeSpec stroke({LayerSpec(LayerPart::click, {"a"}, 1, 2, 3)});
    EXPECT_TRUE(stroke.alignAttacks);
    EXPECT_EQ(stroke.chain, ChainParams::neutral());
    EXPECT_EQ(stroke.layers.size(), 1U);
}

TEST(LayerSpec, constructorGivesAFreshIdAndNoFlags) {
    const LayerSpec layer(LayerPart::caseKnock, {"a", "b"}, 1.5, -2, 0.25);
    EXPECT_EQ(layer.part, LayerPart::caseKnock);
    EXPECT_EQ(layer.samples, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(layer.offsetMs, 1.5);
    EXPECT_EQ(layer.gainDb, -2);
    EXPECT_EQ(layer.pitch, 0.25);
    EXPECT_FALSE(layer.invert || layer.muted || layer.solo);
    EXPECT_NE(layer.id, Uuid());
    EXPECT_NE(layer.id, LayerSpec(LayerPart::caseKnock, {}, 0, 0, 0).id);
    LayerSpec copy = layer;
    EXPECT_EQ(copy, layer);
}

TEST(ChainParams, neutralLeavesTheSoundAsItIs) {
    const ChainParams& neutral = ChainParams::neutral();
    EXPECT_EQ(neutral.eq, Equalizer::flat());
    EXPECT_EQ(neutral.highPassHz, 30);
    EXPECT_EQ(neutral.lowPassHz, 20000);
    EXPECT_EQ(neutral.attackDb, 0);
    EXPECT_EQ(neutral.sustainDb, 0);
    EXPECT_TRUE(neutral.bodyModes.empty());
    EXPECT_EQ(neutral.bodyMix, 0);
    EXPECT_EQ(neutral.damping, 0);
    EXPECT_EQ(neutral.dampingStartMs, 12);
    EXPECT_EQ(neutral.drive, 0);
    EXPECT_EQ(neutral.pitch, 0);
}

TEST(StageSpec, beginsOnABareDesk) {
    const StageSpec stage;
    EXPECT_EQ(stage.placement, Placement::desk);
    EXPECT_EQ(stage.distance, 0);
    EXPECT_EQ(stage.width, 1);
    EXPECT_EQ(stage.room, Room::desk);
    EXPECT_FALSE(stage.deskMat);
}

TEST(Board, findsASoundByItsId) {
    Board board = boardOf({"a", "b", "b"});
    EXPECT_EQ(board.sound("a"), &board.sounds[0]);
    EXPECT_EQ(board.sound("b"), &board.sounds[1]);
    EXPECT_EQ(board.sound("c"), nullptr);
    EXPECT_EQ(board.sound(std::nullopt), nullptr);
    board.sounds.push_back(soundNamed(""));
    EXPECT_EQ(board.sound(std::nullopt), nullptr);
}

TEST(BoardResolve, withoutSoundsEveryKeyIsNothing) {
    Board board;
    board.groups[KeyGroup::alphas] = {.sound = "a"};
    board.keys["0"] = {.sound = "a"};
    for (const std::int64_t code : {keyA, keyTab, keySpace, std::int64_t{200}, std::int64_t{-1}}) {
        EXPECT_FALSE(board.resolve(code).has_value()) << code;
    }
}

TEST(BoardResolve, theFirstSoundPlaysForEveryKey) {
    const Board board = boardOf({"first", "second"});
    const auto resolved = board.resolve(keyA);
    ASSERT_TRUE(resolved.has_value());
    EXPECT_EQ(resolved->sound, &board.sounds[0]);
    EXPECT_EQ(resolved->assignment, (Assignment{.sound = "first"}));
    EXPECT_EQ(resolved->assignment.release, ReleaseMode::inherit);
}

TEST(BoardResolve, aKeyPrevailsOverItsGroupAndTheGroupOverTheFirst) {
    Board board = boardOf({"first", "group", "key"});
    board.groups[KeyGroup::space] = {.sound = "group"};
    EXPECT_EQ(board.resolve(keySpace)->sound->id, "group");
    EXPECT_EQ(board.resolve(keyA)->sound->id, "first");
    board.keys["49"] = {.sound = "key"};
    EXPECT_EQ(board.resolve(keySpace)->sound->id, "key");
    EXPECT_EQ(board.resolve(keySpace)->assignment.sound, "key");
}

TEST(BoardResolve, anOverrideNamingADeletedSoundFallsBack) {
    Board board = boardOf({"first", "group"});
    board.groups[KeyGroup::space] = {.sound = "group"};
    board.keys["49"] = {.sound = "deleted"};
    EXPECT_EQ(board.resolve(keySpace)->sound->id, "group");
    EXPECT_EQ(board.resolve(keySpace)->assignment.sound, "group");
    board.groups[KeyGroup::space].sound = "deleted too";
    EXPECT_EQ(board.resolve(keySpace)->sound->id, "first");
    EXPECT_EQ(board.resolve(keySpace)->assignment.sound, "first");
}

TEST(BoardResolve, anOverrideWithoutASoundKeepsTheGroups) {
    Board board = boardOf({"first", "group"});
    board.groups[KeyGroup::space] = {.sound = "group"};
    board.keys["49"] = {.gainDb = 1};
    EXPECT_EQ(board.resolve(keySpace)->sound->id, "group");
}

TEST(BoardResolve, gainAndPitchOfBothLevelsAdd) {
    Board board = boardOf({"a"});
    board.groups[KeyGroup::alphas] = {.gainDb = -3, .pitch = 0.5};
    board.keys["0"] = {.gainDb = 2, .pitch = -2};
    EXPECT_EQ(board.resolve(keyA)->assignment.gainDb, -1);
    EXPECT_EQ(board.resolve(keyA)->assignment.pitch, -1.5);
    EXPECT_EQ(board.resolve(1)->assignment.gainDb, -3);
    EXPECT_EQ(board.resolve(1)->assignment.pitch, 0.5);
    board.groups.clear();
    EXPECT_EQ(board.resolve(keyA)->assignment.gainDb, 2);
    EXPECT_EQ(board.resolve(keyA)->assignment.pitch, -2);
}

TEST(BoardResolve, panIsTheKeysOrElseTheGroups) {
    Board board = boardOf({"a"});
    board.keys["0"] = {};
    EXPECT_FALSE(board.resolve(keyA)->assignment.pan.has_value());
    board.groups[KeyGroup::alphas] = {.pan = 0.5};
    EXPECT_EQ(board.resolve(keyA)->assignment.pan, 0.5);
    board.keys["0"].pan = 0;
    EXPECT_EQ(board.resolve(keyA)->assignment.pan, 0);
}

TEST(BoardResolve, releaseIsTheKeysUnlessItInherits) {
    constexpr auto modes = allCases<ReleaseMode>();
    for (const ReleaseMode group : modes) {
        for (const ReleaseMode key : modes) {
            Board board = boardOf({"a"});
            board.groups[KeyGroup::alphas] = {.release = group};
            board.keys["0"] = {.release = key};
            EXPECT_EQ(board.resolve(keyA)->assignment.release,
                      key == ReleaseMode::inherit ? group : key);
        }
    }
    Board board = boardOf({"a"});
    board.keys["0"] = {.release = ReleaseMode::on};
    EXPECT_EQ(board.resolve(keyA)->assignment.release, ReleaseMode::on);
    EXPECT_EQ(board.resolve(1)->assignment.release, ReleaseMode::inherit);
}

TEST(BoardResolve, tabBelongsToTheModifiers) {
    Board board = boardOf({"first", "mods"});
    board.groups[KeyGroup::modifiers] = {.sound = "mods"};
    EXPECT_EQ(board.resolve(keyTab)->sound->id, "mods");
}

TEST(BoardResolve, overridesAreFoundByTheDecimalTextOfTheCode) {
    Board board = boardOf({"first", "key"});
    board.keys["-9223372036854775808"] = {.sound = "key"};
    board.keys["049"] = {.sound = "key"};
    EXPECT_EQ(board.resolve(std::numeric_limits<std::int64_t>::min())->sound->id, "key");
    EXPECT_EQ(board.resolve(keySpace)->sound->id, "first");
}

} // namespace
} // namespace vornic
