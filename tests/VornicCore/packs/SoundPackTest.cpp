#include "VornicCore/packs/SoundPack.h"

#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace vornic {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

void writeManifest(const ScratchFolder& folder, const std::string& pack, const std::string& id,
                   const std::string& name) {
    folder.write(pack + "/pack.json", R"({"id": ")" + id + R"(", "name": ")" + name +
                                          R"(", "character": "c", "credit": "d"})");
}

void writePack(const ScratchFolder& folder, const std::string& pack, const std::string& id,
               const std::string& name) {
    writeManifest(folder, pack, id, name);
    folder.write(pack + "/regular-01.wav", "");
}

std::vector<std::string> idsOf(const std::vector<SoundPack>& packs) {
    std::vector<std::string> ids(packs.size());
    std::ranges::transform(packs, ids.begin(), [](const SoundPack& pack) { return pack.id(); });
    return ids;
}

TEST(SoundPack, groupsPressesByTheirFirstWord) {
    EXPECT_THAT(SoundPack::group({"regular-02.wav", "space-01.wav", "regular-01.wav",
                                  "enter-01.wav", "backspace-01.wav", "modifier-01.wav"}),
                UnorderedElementsAre(
                    Pair(KeyClass::regular, ElementsAre("regular-02.wav", "regular-01.wav")),
                    Pair(KeyClass::space, ElementsAre("space-01.wav")),
                    Pair(KeyClass::enter, ElementsAre("enter-01.wav")),
                    Pair(KeyClass::backspace, ElementsAre("backspace-01.wav")),
                    Pair(KeyClass::modifier, ElementsAre("modifier-01.wav"))));
}

TEST(SoundPack, groupIgnoresOtherNames) {
    EXPECT_THAT(SoundPack::group({"regular-01.flac", "regular-01.WAV", "regular.wav",
                                  "Regular-01.wav", "tab-01.wav", "-01.wav", ".wav", "regular",
                                  "regularly-01.wav", "release-01.wav"}),
                IsEmpty());
}

TEST(SoundPack, groupLooksOnlyBeforeTheFirstHyphen) {
    EXPECT_THAT(SoundPack::group({"space-bar-01.wav"}),
                ElementsAre(Pair(KeyClass::space, ElementsAre("space-bar-01.wav"))));
}

TEST(SoundPack, wordsAndClassesBelongTogether) {
    for (const KeyClass keyClass : {KeyClass::regular, KeyClass::space, KeyClass::enter,
                                    KeyClass::backspace, KeyClass::modifier}) {
        const std::string name = std::string(packFileWord(keyClass)) + "-01.wav";
        EXPECT_THAT(SoundPack::group({name}), ElementsAre(Pair(keyClass, ElementsAre(name))));
    }
}

TEST(SoundPack, listsPressesAndReleasesByFileName) {
    const ScratchFolder folder;
    writeManifest(folder, "p", "spring", "Buckling Spring");
    for (const char* name : {"regular-02.wav", "regular-10.wav", "regular-01.wav", "enter-01.wav",
                             "release-02.wav", "release-01.wav", "notes.txt", "wrong-01.wav"}) {
        folder.write(std::string("p/") + name, "");
    }
    const SoundPack pack = required(SoundPack::load(folder / "p"));
    EXPECT_EQ(pack.id(), "spring");
    EXPECT_EQ(pack.name(), "Buckling Spring");
    EXPECT_EQ(pack.folder, folder / "p");
    EXPECT_THAT(pack.files, UnorderedElementsAre(
                                Pair(KeyClass::regular, ElementsAre(folder / "p/regular-01.wav",
                                                                    folder / "p/regular-02.wav",
                                                                    folder / "p/regular-10.wav")),
                                Pair(KeyClass::enter, ElementsAre(folder / "p/enter-01.wav"))));
    EXPECT_THAT(pack.releaseFiles,
                ElementsAre(folder / "p/release-01.wav", folder / "p/release-02.wav"));
}

TEST(SoundPack, namesItsSamplesAfterPackAndFile) {
    SoundPack pack;
    pack.manifest.id = "clicky";
    EXPECT_EQ(pack.sampleID("/anywhere/regular-01.wav"), "clicky/regular-01");
}

TEST(SoundPack, isNoneWithoutAManifest) {
    const ScratchFolder folder;
    folder.write("p/regular-01.wav", "");
    EXPECT_FALSE(SoundPack::load(folder / "p"));
    folder.write("p/pack.json", R"({"id": "p"})");
    EXPECT_FALSE(SoundPack::load(folder / "p"));
    writeManifest(folder, "p", "p", "P");
    EXPECT_TRUE(SoundPack::load(folder / "p"));
}

TEST(SoundPack, isNoneWithReleasesAlone) {
    const ScratchFolder folder;
    writeManifest(folder, "p", "p", "P");
    EXPECT_FALSE(SoundPack::load(folder / "p"));
    folder.write("p/release-01.wav", "");
    EXPECT_FALSE(SoundPack::load(folder / "p"));
}

TEST(SoundPack, needsNoRegularPress) {
    const ScratchFolder folder;
    writeManifest(folder, "p", "p", "P");
    folder.write("p/space-01.wav", "");
    EXPECT_TRUE(SoundPack::load(folder / "p"));
}

TEST(SoundPack, allComeInTheFixedOrderWhateverTheirFolders) {
    const ScratchFolder folder;
    writePack(folder, "1", "spring", "Buckling Spring");
    writePack(folder, "2", "clicky", "Clicky");
    writePack(folder, "3", "metal", "Metallic");
    writePack(folder, "4", "plastic", "Plasticky");
    writePack(folder, "5", "soft", "Soft");
    writePack(folder, "6", "deep", "Deep");
    writePack(folder, "0", "another", "A");
    EXPECT_THAT(idsOf(SoundPack::all(folder.path())),
                ElementsAre("deep", "soft", "plastic", "metal", "clicky", "spring", "another"));
}

TEST(SoundPack, packsOfEqualRankComeByName) {
    const ScratchFolder folder;
    writePack(folder, "1", "x", "Zebra");
    writePack(folder, "2", "y", "Apple");
    writePack(folder, "3", "z", "Mango");
    EXPECT_THAT(idsOf(SoundPack::all(folder.path())), ElementsAre("y", "z", "x"));
}

TEST(SoundPack, packsOfOneNameKeepTheOrderOfTheirFolders) {
    const ScratchFolder folder;
    for (int i = 9; i > 0; --i) {
        const std::string digit = std::to_string(i);
        writePack(folder, digit, "id" + digit, "Same");
    }
    EXPECT_THAT(idsOf(SoundPack::all(folder.path())),
                ElementsAre("id1", "id2", "id3", "id4", "id5", "id6", "id7", "id8", "id9"));
}

TEST(SoundPack, allLeavesOutWhatIsNoPack) {
    const ScratchFolder folder;
    folder.write("stray.txt", "");
    folder.write("empty/regular-01.wav", "");
    writePack(folder, "good", "deep", "Deep");
    EXPECT_THAT(idsOf(SoundPack::all(folder.path())), ElementsAre("deep"));
}

TEST(SoundPack, allIsEmptyWhereNothingCanBeListed) {
    const ScratchFolder folder;
    EXPECT_THAT(SoundPack::all(folder / "missing"), IsEmpty());
    EXPECT_THAT(SoundPack::all(folder.write("file", "")), IsEmpty());
}

TEST(SoundPack, theDefaultIsDeep) {
    EXPECT_EQ(SoundPack::defaultID, "deep");
}

} // namespace
} // namespace vornic
