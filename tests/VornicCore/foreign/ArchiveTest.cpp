// Archives from anywhere: what leads out of them is left out, what grows without end is refused.

#include "tests/VornicCore/foreign/PackMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class ArchiveTest : public testing::Test {
  protected:
    ArchiveTest() {
        writeStroke(folder_, "stroke.wav", 500);
        stroke_ = readBytes(folder_ / "stroke.wav");
    }

    static std::string refusal(const fs::path& file) {
        try {
            opened(file);
        } catch (const ForeignPackError& error) {
            return error.what();
        }
        return "opened";
    }

    ScratchFolder folder_;
    std::string stroke_;
    const std::string config_ = R"({"name": "Zip", "defines": {"30": "a.wav"}})";
};

TEST_F(ArchiveTest, packsInArchivesOpenWhateverTheyAreCalled) {
    for (const ArchiveKind kind : {ArchiveKind::zip, ArchiveKind::tarGz}) {
        writeArchive(folder_ / "file.bin", kind,
                     {{"pack/config.json", config_}, {"pack/a.wav", stroke_}});
        const ConvertedPack pack = onlyPack(folder_ / "file.bin");
        EXPECT_EQ(pack.report.name, "Zip");
        EXPECT_THAT(recordingsOf(pack, 0), ElementsAre(testStroke(500)));
    }
}

TEST_F(ArchiveTest, nothingLeadsOutOfAnArchive) {
    writeArchive(folder_ / "evil.tgz", ArchiveKind::tarGz,
                 {{"config.json", R"({"name": "Evil", "defines": {"30": "a.wav",
                       "31": "../../etc/passwd", "32": "/etc/passwd", "33": "link.wav"}})"},
                  {"a.wav", stroke_},
                  {"../up.wav", stroke_},
                  {"/tmp/absolute.wav", stroke_},
                  {"x/../../up.wav", stroke_},
                  {"C:\\windows.wav", stroke_},
                  {"link.wav", "", "/etc/passwd"},
                  {"1/2/3/4/5/6/7/8/9/10/deep.wav", stroke_}});
    const auto files = opened(folder_ / "evil.tgz");
    EXPECT_THAT(files->names(), ElementsAre("a.wav", "config.json"));
    EXPECT_THAT(files->notes().ignored, SizeIs(6));
    const auto place = files->path("a.wav").parent_path();
    for (const std::string& name : files->names()) {
        EXPECT_EQ(files->path(name).parent_path(), place);
    }
    const ConvertedPack pack = convertedFrom(*files, findPacks(*files).at(0));
    EXPECT_EQ(pack.report.keys, 1U);
    EXPECT_THAT(pack.report.notes.missing,
                testing::UnorderedElementsAre(HasSubstr("outside the pack"),
                                              HasSubstr("outside the pack"),
                                              HasSubstr("\"link.wav\"")));
    EXPECT_FALSE(fs::exists(folder_ / "up.wav"));
}

TEST_F(ArchiveTest, whatWasUnpackedIsGoneAtTheEnd) {
    writeArchive(folder_ / "p.zip", ArchiveKind::zip, {{"config.json", config_}});
    fs::path place;
    {
        const auto files = opened(folder_ / "p.zip");
        place = files->path("config.json");
        EXPECT_TRUE(fs::exists(place));
        EXPECT_EQ(fs::status(place.parent_path()).permissions() & fs::perms::others_all,
                  fs::perms::none);
    }
    EXPECT_FALSE(fs::exists(place.parent_path()));
}

TEST_F(ArchiveTest, whatGrowsWithoutEndIsRefused) {
    writeArchive(folder_ / "bomb.zip", ArchiveKind::zip,
                 {{"config.json", config_}, {"a.wav", std::string(std::size_t{64} << 20U, '\0')}});
    EXPECT_LT(fs::file_size(folder_ / "bomb.zip"), 100'000U);
    EXPECT_EQ(refusal(folder_ / "bomb.zip"),
              "The archive grows far beyond what a sound pack needs.");
    std::vector<ArchiveItem> many;
    for (std::size_t number = 0; number <= PackLimits::mostFiles; ++number) {
        many.push_back({std::to_string(number), ""});
    }
    writeArchive(folder_ / "many.zip", ArchiveKind::zip, many);
    EXPECT_THAT(refusal(folder_ / "many.zip"), HasSubstr("more than 5000 entries"));
}

TEST_F(ArchiveTest, anArchiveWithinIsNotOpened) {
    writeArchive(folder_ / "inner.zip", ArchiveKind::zip,
                 {{"config.json", config_}, {"a.wav", stroke_}});
    writeArchive(folder_ / "outer.zip", ArchiveKind::zip,
                 {{"inner.zip", readBytes(folder_ / "inner.zip")}});
    EXPECT_THAT(packsIn(folder_ / "outer.zip"), SizeIs(0));
}

TEST_F(ArchiveTest, aCutArchiveGivesWhatIsThereAndSaysSo) {
    writeArchive(folder_ / "whole.tgz", ArchiveKind::tarGz,
                 {{"config.json", config_}, {"a.wav", stroke_}, {"b.wav", stroke_ + "x"}});
    const std::string bytes = readBytes(folder_ / "whole.tgz");
    for (std::size_t length = 0; length < bytes.size(); length += 97) {
        folder_.write("cut.tgz", bytes.substr(0, length));
        try {
            const auto files = opened(folder_ / "cut.tgz");
            EXPECT_THAT(files->notes().missing, SizeIs(testing::Ge(1U))) << length;
        } catch (const ForeignPackError&) {
            continue;
        }
    }
}

TEST_F(ArchiveTest, whatIsNoPackSaysSo) {
    folder_.write("text", "root:x:0:0");
    EXPECT_EQ(refusal(folder_ / "text"), "It is no sound pack that Vornic knows.");
    EXPECT_EQ(refusal(folder_ / "missing"), "There is no such file.");
    EXPECT_EQ(refusal("/dev/zero"), "It is neither a file nor a folder.");
}

TEST_F(ArchiveTest, linksInAFolderAreNotFollowed) {
    folder_.write("pack/config.json",
                  R"({"name": "L", "defines": {"30": "a.wav", "31": "b.wav"}})");
    writeStroke(folder_, "pack/a.wav", 500);
    fs::create_symlink(folder_ / "stroke.wav", folder_ / "pack/b.wav");
    fs::create_directory_symlink(folder_ / "pack", folder_ / "pack/round");
    const ConvertedPack pack = onlyPack(folder_ / "pack");
    EXPECT_EQ(pack.report.keys, 1U);
    EXPECT_THAT(pack.report.notes.ignored,
                testing::UnorderedElementsAre(HasSubstr("\"b.wav\" is a link"),
                                              HasSubstr("\"round\" is a link")));
    EXPECT_THAT(pack.report.notes.missing, ElementsAre(HasSubstr("\"b.wav\"")));
}

} // namespace
} // namespace vornic
