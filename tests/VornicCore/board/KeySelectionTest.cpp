#include "VornicCore/board/KeySelection.h"

#include <gtest/gtest.h>

namespace vornic {
namespace {

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyS = 1;
constexpr std::int64_t keySpace = 49;

Board boardOfTwoSounds() {
    Board board;
    board.sounds = {SoundSpec("a", "a", "", {}, {}, {}, {}),
                    SoundSpec("b", "b", "", {}, {}, {}, {})};
    return board;
}

TEST(KeySelection, namesTheDrawnKeysThatItIsAbout) {
    Board board = boardOfTwoSounds();
    board.keys["0"] = {.sound = "b"};
    const auto keysOf = [&](const KeySelection::Any& selection) {
        return KeySelection::keysOf(selection, board);
    };
    EXPECT_EQ(keysOf(KeySelection::Group{KeyGroup::space}), std::set<std::int64_t>{keySpace});
    EXPECT_EQ(keysOf(KeySelection::Sound{"b"}), std::set<std::int64_t>{keyA});
    EXPECT_EQ(keysOf(KeySelection::Stabilisers{}), (std::set<std::int64_t>{36, 49, 51, 56, 60}))
        << "there is no keypad";
    EXPECT_GT(keysOf(KeySelection::All{}).size(), 70U);
    EXPECT_EQ(keysOf(KeySelection::Keys{{keyA, 999}}), (std::set<std::int64_t>{keyA, 999}))
        << "listed keys count wherever they are";
}

TEST(KeySelection, readsAndChangesGroupsWhereItNamesThem) {
    Board board = boardOfTwoSounds();
    board.groups[KeyGroup::space] = {.gainDb = -3};
    const KeySelection::Any space = KeySelection::Group{KeyGroup::space};
    EXPECT_EQ(KeySelection::assignmentsOf(space, board), std::vector{Assignment{.gainDb = -3}});
    EXPECT_EQ(KeySelection::assignmentsOf(KeySelection::All{}, board).size(),
              allCases<KeyGroup>().size());
    EXPECT_EQ(KeySelection::inheritedBy(space, board), Assignment());

    KeySelection::assign(board, space, [](Assignment& each) { each.pitch = 2; });
    EXPECT_EQ(board.groups[KeyGroup::space], (Assignment{.gainDb = -3, .pitch = 2}));
    KeySelection::assign(board, KeySelection::All{}, [](Assignment& each) { each.gainDb = 1; });
    for (const KeyGroup group : allCases<KeyGroup>()) {
        EXPECT_EQ(board.groups[group].gainDb, 1);
    }
    EXPECT_TRUE(board.keys.empty());
}

TEST(KeySelection, readsAndChangesSingleKeysOtherwise) {
    Board board = boardOfTwoSounds();
    board.groups[keyGroupOf(keyA)] = {.gainDb = -1};
    board.keys["1"] = {.pitch = 4};
    const KeySelection::Any both = KeySelection::Keys{{keyA, keyS}};
    EXPECT_EQ(KeySelection::assignmentsOf(both, board),
              (std::vector{Assignment(), Assignment{.pitch = 4}}));
    EXPECT_EQ(KeySelection::inheritedBy(both, board).gainDb, -1);
    EXPECT_EQ(KeySelection::inheritedBy(KeySelection::Keys{}, board), Assignment());

    KeySelection::assign(board, both, [](Assignment& each) { each.pan = 0.5; });
    EXPECT_EQ(board.keys.at("0"), (Assignment{.pan = 0.5}));
    EXPECT_EQ(board.keys.at("1"), (Assignment{.pitch = 4, .pan = 0.5}));
    EXPECT_EQ(board.groups[keyGroupOf(keyA)].pan, std::nullopt);

    KeySelection::assign(board, both, [](Assignment& each) { each.pan.reset(); });
    EXPECT_FALSE(board.keys.contains("0")) << "what overrides nothing is no override";
    EXPECT_TRUE(board.keys.contains("1"));
}

TEST(KeySelection, givesKeysBackToTheirGroups) {
    Board board = boardOfTwoSounds();
    board.keys["0"] = {.pitch = 4};
    board.keys["1"] = {.pitch = 4};
    const KeySelection::Any first = KeySelection::Keys{{keyA}};
    EXPECT_TRUE(KeySelection::overrides(first, board));
    KeySelection::reset(board, first);
    EXPECT_FALSE(KeySelection::overrides(first, board));
    EXPECT_FALSE(board.keys.contains("0"));
    EXPECT_TRUE(board.keys.contains("1"));
}

} // namespace
} // namespace vornic
