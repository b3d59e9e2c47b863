#include "Vornic/library/PackFolders.h"

#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

TEST(PackFolders, looksBesideTheInstalledProgramThenInTheBuildTree) {
    EXPECT_THAT(packFolders("/usr/bin/vornic"),
                ElementsAre(fs::path("/usr/share/vornic/Packs"), fs::path("/usr/resources/Packs")));
    EXPECT_THAT(packFolders("/src/build/release/Vornic/vornic"),
                ElementsAre(fs::path("/src/build/release/share/vornic/Packs"),
                            fs::path("/src/build/release/resources/Packs")));
}

TEST(PackFolders, aChosenFolderIsTheOnlyOne) {
    EXPECT_THAT(packFolders("/usr/bin/vornic", fs::path("/mine")), ElementsAre(fs::path("/mine")));
}

TEST(PackFolders, anEmptyChoiceIsNone) {
    EXPECT_EQ(packFolders("/usr/bin/vornic", fs::path()), packFolders("/usr/bin/vornic"));
}

TEST(PackFolders, findsTheInstalledPacks) {
    const ScratchFolder folder;
    fs::create_directories(folder / "share/vornic/Packs");
    EXPECT_EQ(findPackFolder(folder / "bin/vornic"), folder / "share/vornic/Packs");
}

TEST(PackFolders, findsThePacksOfTheBuildTree) {
    const ScratchFolder folder;
    fs::create_directories(folder / "resources/Packs");
    EXPECT_EQ(findPackFolder(folder / "Vornic/vornic"), folder / "resources/Packs");
}

TEST(PackFolders, findsNothingWhereThereIsNothing) {
    const ScratchFolder folder;
    EXPECT_EQ(findPackFolder(folder / "bin/vornic"), std::nullopt);
    folder.write("resources/Packs", "a file");
    EXPECT_EQ(findPackFolder(folder / "bin/vornic"), std::nullopt);
}

TEST(PackFolders, aChosenFolderThatIsMissingFallsBackToNoOther) {
    const ScratchFolder folder;
    fs::create_directories(folder / "resources/Packs");
    EXPECT_EQ(findPackFolder(folder / "Vornic/vornic", folder / "missing"), std::nullopt);
    fs::create_directories(folder / "mine");
    EXPECT_EQ(findPackFolder(folder / "Vornic/vornic", folder / "mine"), folder / "mine");
}

} // namespace
} // namespace vornic
