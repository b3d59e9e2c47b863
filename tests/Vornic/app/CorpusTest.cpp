// Files as versions before this one have written them: each has to be read for ever. A folder of
// tests/corpus is what one version wrote, and is never changed; a change of a format adds one.

#include "Vornic/app/SettingsFile.h"
#include "Vornic/library/BoardTransfer.h"
#include "VornicCore/board/BoardFile.h"
#include "VornicCore/board/BoardJson.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> versions() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(VORNIC_CORPUS)) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

class CorpusTest : public ::testing::TestWithParam<std::string> {
  protected:
    /// A copy, since reading sweeps up.
    CorpusTest() {
        fs::copy(fs::path(VORNIC_CORPUS) / GetParam(), scratch / "files",
                 fs::copy_options::recursive);
    }
    fs::path file(const char* name) const { return scratch / "files" / name; }

    ScratchFolder scratch;
};

TEST_P(CorpusTest, settingsAreRead) {
    const SettingsFile settings(file("settings.json"));
    EXPECT_THAT(settings.problems(), IsEmpty());
    EXPECT_FALSE(settings.settings().hearMyself);
    EXPECT_EQ(settings.settings().volume, 0.25);
    EXPECT_EQ(settings.settings().outputKind, OutputKind::headphones);
    EXPECT_EQ(settings.settings().stage.room, Room::wood);
    EXPECT_EQ(settings.settings().tweaks.at("deep").feel, Feel::clicky);
    EXPECT_TRUE(settings.settings().welcomed);
}

TEST_P(CorpusTest, packsRecordingsAndBoardsAreRead) {
    const std::vector<SoundPack> packs = SoundPack::all(file("Packs"));
    ASSERT_THAT(packs, SizeIs(1));
    EXPECT_EQ(packs.front().id(), "spring");
    const SampleLibrary library(packs, file("Samples"));
    const std::vector<SampleInfo> users = UserSampleFolder(file("Samples")).listed();
    ASSERT_THAT(users, testing::Not(IsEmpty()));
    for (const SampleInfo& info : users) {
        EXPECT_TRUE(library.samples(info.id)) << info.id;
    }
    const BoardStore store(packs, file("Boards"));
    EXPECT_THAT(store.problems(), IsEmpty());
    ASSERT_THAT(store.mine(), testing::Not(IsEmpty()));
    for (const Board& board : store.mine()) {
        EXPECT_THAT(board.sounds, testing::Not(IsEmpty()));
        EXPECT_EQ(decodeBoard(encodeBoard(board)), board) << "it is written as it was read";
        for (const SoundSpec& sound : board.sounds) {
            for (const LayerSpec& layer : sound.press.layers) {
                for (const std::string& sample : layer.samples) {
                    EXPECT_TRUE(library.samples(sample)) << sample;
                }
            }
        }
    }
}

TEST_P(CorpusTest, builtInBoardsAndBoardFilesAreRead) {
    std::size_t read = 0;
    for (const auto& entry : fs::directory_iterator(file("given"))) {
        SampleLibrary library({});
        const OpenedBoard opened = openBoard(readBoardFile(entry.path()), library);
        EXPECT_THAT(opened.board.sounds, testing::Not(IsEmpty())) << entry.path();
        ++read;
    }
    EXPECT_GE(read, 7U) << "six built-in boards and one of a user's";
}

INSTANTIATE_TEST_SUITE_P(Versions, CorpusTest, ::testing::ValuesIn(versions()),
                         [](const auto& named) {
                             std::string name = named.param;
                             std::ranges::replace_if(
                                 name, [](char c) { return std::isalnum(c) == 0; }, '_');
                             return name;
                         });

} // namespace
} // namespace vornic
