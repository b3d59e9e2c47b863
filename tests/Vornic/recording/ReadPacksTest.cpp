// Packs as the program reads them: archives, descriptions and sounds in the helper.

#include "Vornic/recording/ReadPacks.h"

#include "tests/support/ScratchFolder.h"
#include "tests/support/SmallPack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::HasSubstr;
using testing::SizeIs;

class ReadPacksTest : public testing::Test {
  protected:
    ReadPacksTest() { writeSmallPack(folder_, "one", "One"); }

    static PackReadOptions options(const fs::path& helper = VORNIC_DECODER) {
        PackReadOptions options;
        options.decoder = helper;
        return options;
    }
    PackRead only(const std::string& name) const {
        FoundPacks packs({folder_ / name}, options());
        EXPECT_THAT(packs.entries(), SizeIs(1));
        return packs.read(0, options());
    }
    static std::string refusal(const std::vector<fs::path>& paths,
                               const fs::path& helper = VORNIC_DECODER) {
        try {
            const FoundPacks packs(paths, options(helper));
            return packs.entries().at(0).error;
        } catch (const ForeignPackError& error) {
            return error.what();
        }
    }
    /// Packs the folder `name` with the system's own program.
    void pack(const std::string& command) const {
        ASSERT_EQ(std::system(("cd " + folder_.path().string() + " && " + command).c_str()), 0)
            << command;
    }

    ScratchFolder folder_;
};

TEST_F(ReadPacksTest, folderArchiveAndDescriptionAreTheSamePack) {
    pack("tar czf one.tgz one && tar cf one.dat one && tar cJf one.tar.xz one");
    const PackRead inFolder = only("one");
    ASSERT_TRUE(inFolder.pack) << inFolder.error;
    EXPECT_EQ(inFolder.pack->report.keys, 1U);
    EXPECT_EQ(inFolder.pack->report.recordings, 2U);
    for (const std::string name : {"one.tgz", "one.dat", "one.tar.xz", "one/config.json"}) {
        const PackRead read = only(name);
        ASSERT_TRUE(read.pack) << name << ": " << read.error;
        EXPECT_EQ(read.pack->contents.samples, inFolder.pack->contents.samples) << name;
    }
}

TEST_F(ReadPacksTest, aPackOfTwoHundredFilesStartsFewHelpers) {
    writeSmallPack(folder_, "full", "Full", 50);
    const fs::path helper =
        folder_.write("helper", "#!/bin/sh\necho started >>" + (folder_ / "starts").string() +
                                    "\nexec " + VORNIC_DECODER + "\n");
    fs::permissions(helper, fs::perms::owner_all);
    FoundPacks packs({folder_ / "full"}, options(helper));
    const PackRead read = packs.read(0, options(helper));
    ASSERT_TRUE(read.pack) << read.error;
    EXPECT_GE(read.pack->report.recordings, 90U);
    const std::string starts = readBytes(folder_ / "starts");
    const auto count = std::ranges::count(starts, '\n');
    EXPECT_GE(count, 2) << "one for the description, one for the sounds";
    EXPECT_LE(count, 9) << "and none for each file";
}

TEST_F(ReadPacksTest, severalPlacesAreOneList) {
    writeSmallPack(folder_, "two", "Two");
    pack("tar czf two.tgz two");
    FoundPacks packs({folder_ / "one", folder_ / "two.tgz"}, options());
    ASSERT_THAT(packs.entries(), SizeIs(2));
    EXPECT_EQ(packs.entries()[0].name, "One");
    EXPECT_EQ(packs.entries()[1].place, "two.tgz/two/config.json");
    for (const std::size_t place : {1U, 0U, 1U}) {
        EXPECT_TRUE(packs.read(place, options()).pack) << "in whatever order";
    }
}

TEST_F(ReadPacksTest, whatEndsTheHelperIsAnErrorAndTheOthersAreRead) {
    folder_.write("all/broken.zip", std::string("PK\x03\x04") + std::string(400, '\xFF'));
    writeSmallPack(folder_, "all/one", "One");
    pack("cd all && tar czf one.tgz one && rm -r one");
    FoundPacks packs({folder_ / "all"}, options());
    ASSERT_THAT(packs.entries(), SizeIs(2));
    EXPECT_NE(packs.entries()[0].error, "");
    EXPECT_TRUE(packs.read(1, options()).pack);
    const fs::path dead = folder_.write("dead", "#!/bin/sh\nexit 0\n");
    fs::permissions(dead, fs::perms::owner_all);
    EXPECT_NE(refusal({folder_ / "one"}, dead), "");
    EXPECT_THAT(refusal({folder_ / "one"}, {}), HasSubstr("which is not installed"));
}

TEST_F(ReadPacksTest, anAnswerThatMakesNoSenseIsRefused) {
    for (const char* const answer :
         {"\\377\\377\\377\\377\\377\\377\\377\\377",
          "\\010\\000\\000\\000\\000\\000\\000\\000aaaaaaaa",
          "\\010\\000\\000\\000\\000\\000\\000\\000\\377\\000\\000\\000\\000\\000\\000\\000"}) {
        const fs::path liar =
            folder_.write("liar", std::string("#!/bin/sh\nprintf '") + answer + "'\n");
        fs::permissions(liar, fs::perms::owner_all);
        EXPECT_NE(refusal({folder_ / "one"}, liar), "") << answer;
    }
}

TEST_F(ReadPacksTest, namesOfAllKindsComeThroughTheHelper) {
    pack("cp one/30.wav 'one/h\xc3\xa4\xff t.wav' && tar czf one.tgz one");
    FoundPacks packs({folder_ / "one.tgz"}, options());
    EXPECT_TRUE(packs.read(0, options()).pack);
}

TEST_F(ReadPacksTest, whatMayHoldPacksIsToldByItsContentToo) {
    pack("tar czf one.x one && tar cf two.x one");
    for (const std::string name : {"one", "one.x", "two.x", "one/config.json"}) {
        EXPECT_TRUE(mayHoldPacks(folder_ / name)) << name;
    }
    for (const std::string name : {"one/30.wav", "missing"}) {
        EXPECT_FALSE(mayHoldPacks(folder_ / name)) << name;
    }
    EXPECT_FALSE(mayHoldPacks("/dev/zero"));
}

} // namespace
} // namespace vornic
