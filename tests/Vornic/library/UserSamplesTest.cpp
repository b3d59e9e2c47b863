#include "Vornic/library/FolderLock.h"
#include "Vornic/library/SampleLibrary.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/render/PartSamples.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <cstdio>
#include <thread>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

const std::vector<float> sound{0.5F, -0.25F, 0, 0.125F};

class UserSamplesTest : public testing::Test {
  protected:
    SampleLibrary library() {
        return SampleLibrary({}, folder(),
                             [this](const std::string& problem) { problems_.push_back(problem); });
    }
    fs::path folder() const { return scratch_ / "Samples"; }
    fs::path index() const { return folder() / "index.json"; }

    ScratchFolder scratch_;
    std::vector<std::string> problems_;
};

TEST_F(UserSamplesTest, aSampleIsStoredUnderItsIdentifierAndListedInTheIndex) {
    SampleLibrary first = library();
    const SampleInfo info = first.addUser("My thock", LayerPart::click, "user/abcd1234", sound);
    EXPECT_EQ(info, (SampleInfo{"user/abcd1234", "My thock", LayerPart::click, "Yours", false}));
    EXPECT_EQ(first.samples("user/abcd1234"), sound);
    EXPECT_TRUE(fs::is_regular_file(folder() / "user_abcd1234.wav"));
    EXPECT_EQ(readBytes(index()), R"([
  {
    "builtIn": false,
    "id": "user/abcd1234",
    "name": "My thock",
    "part": "click",
    "source": "Yours"
  }
])");
    const SampleLibrary second = library();
    EXPECT_THAT(second.userSamples(), ElementsAre(info));
    EXPECT_EQ(second.samples("user/abcd1234"), sound);
    EXPECT_THAT(problems_, IsEmpty());
}

TEST_F(UserSamplesTest, freshIdentifiersAreEightCharactersAndDiffer) {
    SampleLibrary mine = library();
    const SampleInfo one = mine.addUser("a", LayerPart::bottomOut, std::nullopt, sound);
    const SampleInfo other = mine.addUser("a", LayerPart::bottomOut, std::nullopt, sound);
    EXPECT_THAT(one.id, MatchesRegex("user/[0-9A-F]{8}"));
    EXPECT_NE(one.id, other.id);
    EXPECT_THAT(library().userSamples(), ElementsAre(one, other));
}

TEST_F(UserSamplesTest, aSecondAddUnderOneIdentifierReplacesTheFirst) {
    SampleLibrary mine = library();
    mine.addUser("old", LayerPart::click, "user/abcd1234", sound);
    mine.addUser("new", LayerPart::spring, "user/abcd1234", {0.75F, 0});
    EXPECT_THAT(mine.userSamples(), SizeIs(1));
    const SampleLibrary again = library();
    EXPECT_THAT(again.userSamples(),
                ElementsAre(SampleInfo{"user/abcd1234", "new", LayerPart::spring, "Yours", false}));
    EXPECT_EQ(again.samples("user/abcd1234"), (std::vector<float>{0.75F, 0}));
}

TEST_F(UserSamplesTest, severalAreAddedAtOnce) {
    SampleLibrary mine = library();
    const auto infos = mine.addUsers(
        {{"a", LayerPart::bottomOut, sound}, {"b", LayerPart::topOut, {0.25F, 0.25F}}});
    ASSERT_THAT(infos, SizeIs(2));
    const SampleLibrary again = library();
    EXPECT_EQ(again.userSamples(), infos);
    EXPECT_EQ(again.samples(infos[1].id), (std::vector<float>{0.25F, 0.25F}));
}

TEST_F(UserSamplesTest, aRemovedSampleIsGoneFromMemoryIndexAndDisk) {
    SampleLibrary mine = library();
    mine.addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    const SampleInfo kept = mine.addUser("b", LayerPart::click, "user/bbbbbbbb", sound);
    EXPECT_TRUE(mine.removeUser("user/aaaaaaaa"));
    EXPECT_FALSE(mine.removeUser("user/aaaaaaaa"));
    EXPECT_EQ(mine.samples("user/aaaaaaaa"), std::nullopt);
    EXPECT_FALSE(fs::exists(folder() / "user_aaaaaaaa.wav"));
    EXPECT_THAT(library().userSamples(), ElementsAre(kept));
}

TEST_F(UserSamplesTest, aSampleForThisRunIsNeverWritten) {
    SampleLibrary mine = library();
    const SampleInfo passing = mine.addForThisRun({"a", LayerPart::click, sound});
    const SampleInfo kept = mine.addUser("b", LayerPart::click, "user/bbbbbbbb", sound);
    EXPECT_THAT(mine.userSamples(), ElementsAre(passing, kept));
    EXPECT_EQ(mine.samples(passing.id), sound);
    EXPECT_THAT(library().userSamples(), ElementsAre(kept));
    EXPECT_TRUE(mine.removeUser(passing.id));
    EXPECT_EQ(mine.samples(passing.id), std::nullopt);
}

TEST_F(UserSamplesTest, withoutAFolderSamplesStayInMemory) {
    SampleLibrary mine({});
    const SampleInfo info = mine.addUser("a", LayerPart::click, std::nullopt, sound);
    EXPECT_EQ(mine.samples(info.id), sound);
    EXPECT_TRUE(mine.removeUser(info.id));
}

TEST_F(UserSamplesTest, aFileThatCannotBeReadIsDroppedButListedUntilTheNextWrite) {
    library().addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    scratch_.write("Samples/user_aaaaaaaa.wav", "no sound");
    SampleLibrary mine = library();
    EXPECT_THAT(mine.userSamples(), IsEmpty());
    EXPECT_EQ(mine.samples("user/aaaaaaaa"), std::nullopt);
    EXPECT_THAT(readBytes(index()), HasSubstr("user/aaaaaaaa"));
    mine.addUser("b", LayerPart::click, "user/bbbbbbbb", sound);
    EXPECT_THAT(readBytes(index()), testing::Not(HasSubstr("user/aaaaaaaa")));
}

TEST_F(UserSamplesTest, aDamagedIndexLoadsNothingAndIsPutAsideNotOverwritten) {
    for (const std::string damage : {"[{\"id\": \"user/1\"", "", "{}", "[{\"id\": 7}]"}) {
        scratch_.write("Samples/index.json", damage);
        SampleLibrary mine = library();
        EXPECT_THAT(mine.userSamples(), IsEmpty());
        EXPECT_EQ(readBytes(index()), damage) << "reading changes nothing";
        const SampleInfo info = mine.addUser("b", LayerPart::click, "user/bbbbbbbb", sound);
        EXPECT_THAT(library().userSamples(), ElementsAre(info));
    }
    EXPECT_EQ(readBytes(folder() / "index-damaged-1.json"), "[{\"id\": \"user/1\"");
    EXPECT_EQ(readBytes(folder() / "index-damaged-4.json"), "[{\"id\": 7}]");
}

TEST_F(UserSamplesTest, anIndexDamagedWhileTheProgramRunsIsMadeAgain) {
    SampleLibrary mine = library();
    const SampleInfo old = mine.addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    scratch_.write("Samples/index.json", "half of i");
    const SampleInfo added = mine.addUser("b", LayerPart::click, "user/bbbbbbbb", sound);
    EXPECT_THAT(library().userSamples(), ElementsAre(old, added));
}

TEST_F(UserSamplesTest, whatAnotherProgramAddedMeanwhileStays) {
    SampleLibrary mine = library();
    const SampleInfo theirs = library().addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    const SampleInfo own = mine.addUser("b", LayerPart::click, "user/bbbbbbbb", sound);
    EXPECT_THAT(library().userSamples(), ElementsAre(theirs, own));
}

TEST_F(UserSamplesTest, anIndexMayNotReplaceWhatComesFromElsewhereNorReachOtherFolders) {
    writeWAV(sound, scratch_ / "secret.wav");
    scratch_.write("deep/pack.json",
                   R"({"id": "deep", "name": "n", "character": "c", "credit": "d"})");
    writeWAV(sound, scratch_ / "deep/regular-01.wav");
    const std::vector packs{required(SoundPack::load(scratch_ / "deep"))};
    writeWAV({{0.1F, 0.1F}}, scratch_ / "Samples/deep_regular-01.wav");
    const auto entry = [](const std::string& id) {
        return R"({"id": ")" + id +
               R"(", "name": "n", "part": "click", "source": "Yours", "builtIn": false})";
    };
    scratch_.write("Samples/index.json",
                   "[" + entry("deep/regular-01") + "," + entry("../secret") + "]");
    const SampleLibrary mine(packs, folder());
    EXPECT_EQ(mine.samples("deep/regular-01"), sound);
    EXPECT_EQ(mine.samples("../secret"), std::nullopt);
    EXPECT_THAT(mine.userSamples(), IsEmpty());
}

TEST_F(UserSamplesTest, aFailureToWriteIsReportedAndTheSampleStaysForThisRun) {
    scratch_.write("Samples", "a file where the folder should be");
    SampleLibrary mine = library();
    const SampleInfo info = mine.addUser("a", LayerPart::click, std::nullopt, sound);
    EXPECT_EQ(mine.samples(info.id), sound);
    ASSERT_THAT(problems_, SizeIs(1));
    EXPECT_THAT(problems_[0], HasSubstr("\"a\""));
    EXPECT_THAT(mine.addUsers({{"b", LayerPart::click, sound}}), IsEmpty());
    EXPECT_THAT(mine.userSamples(), ElementsAre(info));
}

TEST_F(UserSamplesTest, severalAreWrittenAllOrNone) {
    // Eight samples, of which none can be listed: the index is a folder.
    fs::create_directories(index());
    SampleLibrary mine = library();
    EXPECT_THAT(
        mine.addUsers(std::vector<SampleLibrary::NewSample>(8, {"b", LayerPart::click, sound})),
        IsEmpty());
    EXPECT_EQ(mine.count(), 0U);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder()), {}), 1);
}

/// Adds and removes samples until it is killed.
[[noreturn]] void workUntilKilled(const fs::path& folder, int begun) {
    SampleLibrary mine({}, folder);
    std::vector<std::string> ids;
    for (int round = 0;; ++round) {
        ids.push_back(mine.addUser("n", LayerPart::click, std::nullopt, sound).id);
        if (round % 3 == 2) {
            mine.removeUser(ids.front());
            ids.erase(ids.begin());
        }
        if (round == 0 && ::write(begun, "b", 1) != 1) {
            _exit(1);
        }
    }
}

TEST_F(UserSamplesTest, whenTheProgramIsKilledTheIndexIsWholeAndItsFilesAreThere) {
    std::size_t listed = 0;
    for (int attempt = 0; attempt < 20; ++attempt) {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const pid_t child = fork();
        if (child == 0) {
            workUntilKilled(folder(), pipe[1]);
        }
        char begun = 0;
        ASSERT_EQ(::read(pipe[0], &begun, 1), 1);
        // Each attempt dies at another moment of its work.
        std::this_thread::sleep_for(std::chrono::microseconds(731 * attempt));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ::close(pipe[0]);
        ::close(pipe[1]);

        const UserSampleFolder samples(folder());
        const auto infos = samples.listed();
        EXPECT_THAT(infos, testing::Not(IsEmpty()));
        for (const SampleInfo& info : infos) {
            EXPECT_TRUE(fs::is_regular_file(samples.fileOf(info.id))) << info.id;
        }
        const SampleLibrary mine = library();
        EXPECT_EQ(mine.userSamples(), infos) << "every file is whole";
        EXPECT_EQ(static_cast<std::size_t>(std::distance(fs::directory_iterator(folder()), {})),
                  infos.size() + 1)
            << "nothing is left that the index does not name";
        listed = infos.size();
    }
    EXPECT_GE(listed, 20U) << "each attempt adds to what the earlier ones left";
    EXPECT_FALSE(fs::exists(folder() / "index-damaged-1.json"));
}

TEST_F(UserSamplesTest, whatAKilledProgramHasLeftGoesAtTheStartUnlessSomebodyIsAdding) {
    library().addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    for (const char* const left : {"user_bbbbbbbb.wav", ".user_cccccccc.wav.7-1.part"}) {
        scratch_.write(std::string("Samples/") + left, "");
    }
    for (const char* const own : {"user_take one.wav", "notes.wav", "index-damaged-1.json"}) {
        scratch_.write(std::string("Samples/") + own, "");
    }
    const auto count = [&] { return std::distance(fs::directory_iterator(folder()), {}); };
    {
        const FolderLock adding(folder());
        library();
        EXPECT_EQ(count(), 7);
    }
    EXPECT_THAT(library().userSamples(), SizeIs(1));
    EXPECT_EQ(count(), 5);
    EXPECT_TRUE(fs::exists(folder() / "user_aaaaaaaa.wav"));
    EXPECT_TRUE(fs::exists(folder() / "user_take one.wav"));
}

TEST_F(UserSamplesTest, whereTheIndexIsLostNoRecordingIsTakenForRubbish) {
    library().addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    for (const char* const index : {"", "[1"}) {
        fs::remove(folder() / "index.json");
        if (*index != '\0') {
            scratch_.write("Samples/index.json", index);
        }
        library();
        EXPECT_TRUE(fs::exists(folder() / "user_aaaaaaaa.wav")) << index;
    }
}

TEST_F(UserSamplesTest, nobodyElseCanReadTheUsersRecordings) {
    const auto rights = [&](const char* name) { return fs::status(folder() / name).permissions(); };
    const mode_t former = umask(0);
    library().addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    umask(former);
    constexpr fs::perms mine = fs::perms::owner_read | fs::perms::owner_write;
    EXPECT_EQ(fs::status(folder()).permissions(), fs::perms::owner_all);
    for (const char* const file : {"user_aaaaaaaa.wav", "index.json"}) {
        EXPECT_EQ(rights(file), mine);
        fs::permissions(folder() / file, mine | fs::perms::group_read | fs::perms::others_read);
    }
    library();
    EXPECT_EQ(rights("user_aaaaaaaa.wav"), mine) << "those from before are narrowed";
    EXPECT_EQ(rights("index.json"), mine);
}

TEST_F(UserSamplesTest, whatIsThereForThisRunCanBeKept) {
    SampleLibrary mine = library();
    const SampleInfo info = mine.addForThisRun({"a", LayerPart::click, sound});
    EXPECT_TRUE(mine.keep({info.id}));
    EXPECT_THAT(mine.userSamples(), ElementsAre(info));
    EXPECT_THAT(library().userSamples(), ElementsAre(info));
    EXPECT_EQ(library().samples(info.id), sound);
    EXPECT_TRUE(mine.removeUser(info.id));
    EXPECT_THAT(library().userSamples(), IsEmpty());
}

TEST_F(UserSamplesTest, twoThreadsMayAddAtOnce) {
    SampleLibrary mine = library();
    const auto addOften = [&] {
        for (int i = 0; i < 10; ++i) {
            mine.addUser("n", LayerPart::click, std::nullopt, sound);
        }
    };
    {
        std::jthread one(addOften);
        std::jthread two(addOften);
    }
    EXPECT_THAT(library().userSamples(), SizeIs(20));
}

TEST_F(UserSamplesTest, derivesTheLayersThatPartsAskForFromThePacks) {
    std::vector<SoundPack> packs;
    std::vector<float> stroke(9600);
    for (std::size_t i = 0; i < stroke.size(); ++i) {
        stroke[i] = static_cast<float>(std::sin(static_cast<double>(i * i) * 0.001)) * 0.5F;
    }
    for (const std::string id : {"clicky", "spring", "metal"}) {
        scratch_.write(id + "/pack.json",
                       R"({"id": ")" + id + R"(", "name": "n", "character": "c", "credit": "d"})");
        writeWAV(stroke, scratch_ / id / "regular-01.wav");
        packs.push_back(required(SoundPack::load(scratch_ / id)));
    }
    const SampleLibrary mine(packs);
    EXPECT_THAT(mine.userSamples(),
                ElementsAre(SampleInfo{"part/click", "Click (from Clicky)", LayerPart::click,
                                       "Built in", true},
                            SampleInfo{"part/spring", "Spring ping (from Buckling Spring)",
                                       LayerPart::spring, "Built in", true},
                            SampleInfo{"part/rattle", "Wire rattle (from Metallic)",
                                       LayerPart::rattle, "Built in", true}));
    const auto from = required(mine.samples("spring/regular-01"));
    EXPECT_EQ(mine.samples("part/click"), PartSamples::click(from));
    EXPECT_EQ(mine.samples("part/spring"), PartSamples::spring(from));
    EXPECT_EQ(mine.samples("part/rattle"), PartSamples::rattle(from));
}

TEST_F(UserSamplesTest, aDerivedSampleWithoutItsPackIsLeftOutAndIsNotTheUsersToRemove) {
    scratch_.write("clicky/pack.json",
                   R"({"id": "clicky", "name": "n", "character": "c", "credit": "d"})");
    writeWAV(sound, scratch_ / "clicky/regular-01.wav");
    const std::vector packs{required(SoundPack::load(scratch_ / "clicky"))};
    SampleLibrary mine(packs, folder());
    ASSERT_THAT(mine.userSamples(), SizeIs(1));
    EXPECT_FALSE(mine.removeUser("part/click"));
    EXPECT_FALSE(mine.removeUser("clicky/regular-01"));
    mine.addUser("a", LayerPart::click, "user/aaaaaaaa", sound);
    EXPECT_THAT(readBytes(index()), testing::Not(HasSubstr("part/click")));
}

} // namespace
} // namespace vornic
