#include "Vornic/library/SampleLibrary.h"

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace vornic {
namespace {

class SampleLibraryTest : public testing::Test {
  protected:
    SoundPack pack(const std::string& id, const std::vector<std::string>& names, float value) {
        folder_.write(id + "/pack.json",
                      R"({"id": ")" + id + R"(", "name": "n", "character": "c", "credit": "d"})");
        for (const std::string& name : names) {
            writeWAV(std::vector<float>{value, 0}, folder_ / id / name);
        }
        return required(SoundPack::load(folder_ / id));
    }

    ScratchFolder folder_;
};

TEST_F(SampleLibraryTest, holdsEveryPressAndReleaseByIdentifier) {
    const std::vector packs{
        pack("deep", {"regular-01.wav", "regular-02.wav", "space-01.wav", "release-01.wav"}, 0.5F),
        pack("spring", {"regular-01.wav"}, 0.25F)};
    const SampleLibrary library(packs);
    EXPECT_EQ(library.count(), 5U);
    for (const char* id :
         {"deep/regular-01", "deep/regular-02", "deep/space-01", "deep/release-01"}) {
        EXPECT_EQ(library.samples(id), (std::vector<float>{0.5F, 0})) << id;
    }
    EXPECT_EQ(library.samples("spring/regular-01"), (std::vector<float>{0.25F, 0}));
}

TEST_F(SampleLibraryTest, hasNothingUnderOtherIdentifiers) {
    const std::vector packs{pack("deep", {"regular-01.wav"}, 0.5F)};
    const SampleLibrary library(packs);
    for (const char* id : {"", "deep", "regular-01", "deep/regular-01.wav", "deep/regular-03"}) {
        EXPECT_EQ(library.samples(id), std::nullopt) << id;
    }
}

TEST_F(SampleLibraryTest, leavesOutFilesThatCannotBeRead) {
    folder_.write("deep/regular-02.wav", "no sound");
    const std::vector packs{pack("deep", {"regular-01.wav"}, 0.5F)};
    const SampleLibrary library(packs);
    EXPECT_EQ(library.count(), 1U);
    EXPECT_TRUE(library.samples("deep/regular-01"));
}

TEST_F(SampleLibraryTest, readsARecordingOnceWhenItIsFirstAskedFor) {
    const std::vector packs{pack("deep", {"regular-01.wav"}, 0.5F)};
    const SampleLibrary library(packs);
    writeWAV(std::vector<float>{0.25F, 0}, packs.front().files.at(KeyClass::regular).front());
    EXPECT_EQ(library.frames("deep/regular-01"), 2U);
    EXPECT_EQ(library.samples("deep/regular-01"), (std::vector<float>{0.25F, 0}));
    std::filesystem::remove(packs.front().files.at(KeyClass::regular).front());
    EXPECT_EQ(library.samples("deep/regular-01"), (std::vector<float>{0.25F, 0}));
    EXPECT_EQ(library.frames("deep/regular-01"), 2U);
}

TEST_F(SampleLibraryTest, forgetsWhatNobodyAskedForSinceItLastForgot) {
    const std::vector packs{pack("deep", {"regular-01.wav"}, 0.5F)};
    const std::filesystem::path file = packs.front().files.at(KeyClass::regular).front();
    const SampleLibrary library(packs);
    EXPECT_TRUE(library.samples("deep/regular-01"));
    writeWAV(std::vector<float>{0.25F, 0, 0}, file);
    library.forgetUnused();
    EXPECT_EQ(library.frames("deep/regular-01"), 2U) << "asked for, so it stays";
    library.forgetUnused();
    EXPECT_EQ(library.frames("deep/regular-01"), 3U) << "read anew";
}

TEST_F(SampleLibraryTest, forgetsNothingThatNoFileHas) {
    SampleLibrary library({});
    const std::string id = library.addForThisRun({.name = "One", .samples = {0.5F}}).id;
    library.forgetUnused();
    library.forgetUnused();
    EXPECT_EQ(library.samples(id), std::vector<float>{0.5F});
}

TEST_F(SampleLibraryTest, isEmptyWithoutPacks) {
    EXPECT_EQ(SampleLibrary({}).count(), 0U);
}

TEST_F(SampleLibraryTest, mayBeReadFromSeveralThreads) {
    const std::vector packs{pack("deep", {"regular-01.wav"}, 0.5F)};
    const SampleLibrary library(packs);
    const auto readOften = [&] {
        for (int i = 0; i < 1000; ++i) {
            EXPECT_TRUE(library.samples("deep/regular-01"));
        }
    };
    std::jthread one(readOften);
    std::jthread two(readOften);
}

} // namespace
} // namespace vornic
