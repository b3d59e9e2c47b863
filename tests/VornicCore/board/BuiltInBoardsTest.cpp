#include "VornicCore/board/BuiltInBoards.h"

#include "tests/support/Required.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace vornic {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

SoundPack packNamed(const std::string& id) {
    return {.manifest = {.id = id, .name = "any", .character = "any", .credit = "By " + id},
            .folder = "/packs/" + id,
            .files = {{KeyClass::regular, {"/packs/p/regular-01.wav", "/packs/p/regular-02.wav"}},
                      {KeyClass::space, {"/packs/p/space-01.wav"}},
                      {KeyClass::enter, {"/packs/p/enter-01.wav"}},
                      {KeyClass::backspace, {"/packs/p/backspace-01.wav"}},
                      {KeyClass::modifier, {"/packs/p/modifier-01.wav"}}},
            .releaseFiles = {"/packs/p/release-01.wav", "/packs/p/release-02.wav"}};
}

Board boardFrom(const SoundPack& pack) {
    const std::vector<Board> boards = BuiltInBoards::make(std::vector{pack});
    EXPECT_EQ(boards.size(), 1U);
    return boards.empty() ? Board() : boards.front();
}

std::vector<std::string> idsOf(const std::vector<Board>& boards) {
    std::vector<std::string> ids(boards.size());
    std::ranges::transform(boards, ids.begin(), &Board::id);
    return ids;
}

// The samples of a stroke, which must have one layer.
std::vector<std::string> samplesOf(const StrokeSpec& stroke) {
    EXPECT_EQ(stroke.layers.size(), 1U);
    return stroke.layers.empty() ? std::vector<std::string>() : stroke.layers.front().samples;
}

const BuiltInBoards::Recipe& recipe(std::string_view id) {
    return BuiltInBoards::recipes().find(id)->second;
}

TEST(BuiltInBoards, hasARecipeForEachPackInOrder) {
    EXPECT_THAT(BuiltInBoards::order,
                ElementsAre("deep", "soft", "plastic", "metal", "clicky", "spring"));
    EXPECT_EQ(BuiltInBoards::recipes().size(), BuiltInBoards::order.size());
    for (const std::string_view id : BuiltInBoards::order) {
        EXPECT_TRUE(BuiltInBoards::recipes().contains(id)) << id;
    }
}

TEST(BuiltInBoards, recipesSayWhatTheUserReads) {
    const auto expect = [](std::string_view id, std::string_view name, std::string_view detail,
                           std::string_view color) {
        EXPECT_EQ(recipe(id).name, name);
        EXPECT_EQ(recipe(id).detail, detail);
        EXPECT_EQ(recipe(id).color, color);
    };
    expect("deep", "Deep", "Rounded and low, like a heavy custom board", "#5E5CE6");
    expect("soft", "Soft", "Quiet and gentle, good for long sessions", "#30D158");
    expect("plastic", "Plasticky", "A classic office keyboard", "#63E6E2");
    expect("metal", "Metallic", "An electric typewriter", "#FFD60A");
    expect("clicky", "Clicky", "A sharp click on every key", "#FF375F");
    expect("spring", "Buckling Spring", "A loud spring under every key", "#BF5AF2");
}

TEST(BuiltInBoards, recipesNameTheSwitch) {
    const auto parts = [](SwitchType type, Housing housing, Lube lube) {
        return SwitchParts{.type = type,
                           .housing = housing,
                           .lube = lube,
                           .spring = Spring::standard,
                           .films = false};
    };
    EXPECT_EQ(recipe("deep").switchParts, parts(SwitchType::linear, Housing::nylon, Lube::light));
    EXPECT_EQ(recipe("soft").switchParts, parts(SwitchType::tactile, Housing::nylon, Lube::light));
    EXPECT_EQ(recipe("plastic").switchParts,
              parts(SwitchType::linear, Housing::polycarbonate, Lube::none));
    EXPECT_EQ(recipe("metal").switchParts, parts(SwitchType::clicky, Housing::pom, Lube::none));
    EXPECT_EQ(recipe("clicky").switchParts, parts(SwitchType::clicky, Housing::nylon, Lube::none));
    EXPECT_EQ(recipe("spring").switchParts, parts(SwitchType::clicky, Housing::nylon, Lube::none));
}

TEST(BuiltInBoards, recipesNameTheBuild) {
    const auto build = [](CaseMaterial material, Plate plate, Mount mount, std::set<Foam> foams,
                          KeycapMaterial caps, KeycapProfile profile) {
        return BuildParts{.caseMaterial = material,
                          .plate = plate,
                          .mount = mount,
                          .foams = std::move(foams),
                          .keycapMaterial = caps,
                          .keycapProfile = profile};
    };
    EXPECT_EQ(recipe("deep").build, build(CaseMaterial::plastic, Plate::none, Mount::tray, {},
                                          KeycapMaterial::pbt, KeycapProfile::oem));
    EXPECT_EQ(recipe("soft").build,
              build(CaseMaterial::plastic, Plate::polycarbonate, Mount::gasket, {Foam::caseFoam},
                    KeycapMaterial::pbt, KeycapProfile::cherry));
    EXPECT_EQ(recipe("plastic").build, build(CaseMaterial::plastic, Plate::none, Mount::tray, {},
                                             KeycapMaterial::abs, KeycapProfile::lowProfile));
    EXPECT_EQ(recipe("metal").build, build(CaseMaterial::aluminium, Plate::brass, Mount::top, {},
                                           KeycapMaterial::abs, KeycapProfile::sa));
    EXPECT_EQ(recipe("clicky").build, build(CaseMaterial::plastic, Plate::aluminium, Mount::top, {},
                                            KeycapMaterial::pbt, KeycapProfile::cherry));
    EXPECT_EQ(recipe("spring").build, build(CaseMaterial::plastic, Plate::aluminium, Mount::top, {},
                                            KeycapMaterial::pbt, KeycapProfile::oem));
}

TEST(BuiltInBoards, allSixComeInOrder) {
    std::vector<SoundPack> packs;
    for (const char* id : {"spring", "metal", "deep", "clicky", "soft", "plastic"}) {
        packs.push_back(packNamed(id));
    }
    EXPECT_THAT(idsOf(BuiltInBoards::make(packs)),
                ElementsAre("deep", "soft", "plastic", "metal", "clicky", "spring"));
}

TEST(BuiltInBoards, aPackWithoutARecipeMakesNoBoard) {
    const std::vector packs{packNamed("mine"), packNamed("spring"), packNamed("deep")};
    EXPECT_THAT(idsOf(BuiltInBoards::make(packs)), ElementsAre("deep", "spring"));
}

TEST(BuiltInBoards, aPackWithoutARegularPressMakesNoBoard) {
    SoundPack without = packNamed("deep");
    without.files.erase(KeyClass::regular);
    SoundPack empty = packNamed("soft");
    empty.files[KeyClass::regular].clear();
    EXPECT_THAT(idsOf(BuiltInBoards::make(std::vector{without, empty, packNamed("spring")})),
                ElementsAre("spring"));
}

TEST(BuiltInBoards, noPacksMakeNoBoards) {
    EXPECT_THAT(BuiltInBoards::make({}), IsEmpty());
}

TEST(BuiltInBoards, theBoardIsThatOfTheRecipe) {
    const Board board = boardFrom(packNamed("soft"));
    EXPECT_EQ(board.schema, 1);
    EXPECT_EQ(board.name, "Soft");
    EXPECT_EQ(board.detail, "Quiet and gentle, good for long sessions");
    EXPECT_EQ(board.colorHex, "#30D158");
    EXPECT_EQ(board.build, recipe("soft").build);
    EXPECT_EQ(board.recordedBuild, recipe("soft").build);
    EXPECT_EQ(board.stabs.rattle, 0.15);
    EXPECT_EQ(board.character, Character());
    EXPECT_THAT(board.keys, IsEmpty());
    EXPECT_FALSE(board.releaseByDefault);
    EXPECT_TRUE(board.builtIn);
    EXPECT_THAT(board.credits, ElementsAre("By soft"));
}

TEST(BuiltInBoards, hasASoundForEachKeyClass) {
    const Board board = boardFrom(packNamed("deep"));
    ASSERT_EQ(board.sounds.size(), 5U);
    const std::vector<std::pair<std::string, std::vector<std::string>>> wanted{
        {"keys", {"deep/regular-01", "deep/regular-02"}},
        {"space", {"deep/space-01"}},
        {"enter", {"deep/enter-01"}},
        {"back", {"deep/backspace-01"}},
        {"mods", {"deep/modifier-01"}}};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const SoundSpec& sound = board.sounds[i];
        EXPECT_EQ(sound.id, wanted[i].first);
        EXPECT_EQ(samplesOf(sound.press), wanted[i].second);
        EXPECT_EQ(sound.switchParts, recipe("deep").switchParts);
        EXPECT_EQ(sound.recordedAs, recipe("deep").switchParts);
        EXPECT_NE(sound.name, "");
    }
    EXPECT_EQ(board.sounds.front().name, "Deep keys");
}

TEST(BuiltInBoards, nothingColoursWhatThePackIs) {
    for (const char* pack : {"deep", "soft", "plastic", "metal", "clicky", "spring"}) {
        for (const SoundSpec& sound : boardFrom(packNamed(pack)).sounds) {
            EXPECT_EQ(sound.press.chain, ChainParams::neutral()) << pack << ' ' << sound.id;
            EXPECT_EQ(required(sound.release).chain, ChainParams::neutral()) << pack;
        }
    }
}

TEST(BuiltInBoards, aClassWithoutRecordingsHasAnEmptyLayer) {
    SoundPack pack = packNamed("deep");
    pack.files.erase(KeyClass::enter);
    const Board board = boardFrom(pack);
    ASSERT_EQ(board.sounds.size(), 5U);
    EXPECT_EQ(board.sounds[2].id, "enter");
    EXPECT_THAT(samplesOf(board.sounds[2].press), IsEmpty());
}

TEST(BuiltInBoards, soundsReleaseWhereThePackDoes) {
    const Board board = boardFrom(packNamed("spring"));
    for (const SoundSpec& sound : board.sounds) {
        EXPECT_THAT(samplesOf(required(sound.release)),
                    ElementsAre("spring/release-01", "spring/release-02"));
    }
    SoundPack silent = packNamed("spring");
    silent.releaseFiles.clear();
    for (const SoundSpec& sound : boardFrom(silent).sounds) {
        EXPECT_FALSE(sound.release);
    }
}

TEST(BuiltInBoards, everyGroupHasItsAssignment) {
    const auto expect = [](const Board& board, KeyGroup group, const std::string& sound,
                           double gainDb, double pitch) {
        ASSERT_TRUE(board.groups.contains(group));
        const Assignment wanted{.sound = sound,
                                .gainDb = gainDb,
                                .pitch = pitch,
                                .pan = std::nullopt,
                                .release = ReleaseMode::inherit};
        EXPECT_EQ(board.groups.at(group), wanted) << rawString(group);
    };
    const Board board = boardFrom(packNamed("clicky"));
    EXPECT_EQ(board.groups.size(), 8U);
    expect(board, KeyGroup::alphas, "keys", 0, 0);
    expect(board, KeyGroup::numbers, "keys", 0, 0);
    expect(board, KeyGroup::modifiers, "mods", -2, 0);
    expect(board, KeyGroup::space, "space", 0, 0);
    expect(board, KeyGroup::enter, "enter", 0, 0);
    expect(board, KeyGroup::backspace, "back", 0, 0);
    expect(board, KeyGroup::arrows, "keys", -2, 0);
    expect(board, KeyGroup::function, "keys", -3, 0.5);
}

TEST(BuiltInBoards, keysResolveToTheirSounds) {
    const Board board = boardFrom(packNamed("spring"));
    const auto soundOf = [&](std::int64_t keyCode) {
        const auto resolved = board.resolve(keyCode);
        return resolved ? resolved->sound->id : std::string();
    };
    EXPECT_EQ(soundOf(0), "keys");
    EXPECT_EQ(soundOf(49), "space");
    EXPECT_EQ(soundOf(36), "enter");
    EXPECT_EQ(soundOf(51), "back");
    EXPECT_EQ(soundOf(56), "mods");
    EXPECT_EQ(soundOf(126), "keys");
}

} // namespace
} // namespace vornic
