#include "tests/VornicCore/foreign/PackMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyS = 1;
constexpr std::int64_t keyQ = 12;
constexpr std::int64_t insert = 114;

class MechvibesTest : public testing::Test {
  protected:
    /// One file of six strokes of 100 ms.
    void writeStrip(const std::string& name) const {
        std::vector<float> strip;
        for (int number = 0; number < 6; ++number) {
            const std::vector<float> stroke = testStroke(400 + 150 * number);
            strip.insert(strip.end(), stroke.begin(), stroke.end());
        }
        folder_.write(name, "");
        writeFloatWAV(strip, folder_ / name);
    }

    static std::vector<float> piece(int number) { return testStroke(400 + 150 * number); }

    ScratchFolder folder_;
};

TEST_F(MechvibesTest, slicesAreCutToTheFrameByStartAndDuration) {
    writeStrip("pack/all.wav");
    folder_.write("pack/config.json", R"({"id": "x", "name": "Strip", "key_define_type": "single",
        "includes_numpad": false, "sound": "all.wav", "defines": {
        "30": [0, 100], "30-up": [100, 100], "31": [200, 100], "3666": [300, 100],
        "16": [0, 100]}})");
    const ConvertedPack pack = onlyPack(folder_ / "pack");
    EXPECT_EQ(pack.report.format, PackFormat::mechvibes);
    EXPECT_EQ(pack.report.name, "Strip");
    EXPECT_EQ(pack.report.keys, 4U);
    EXPECT_EQ(pack.report.releases, 1U);
    EXPECT_EQ(pack.report.recordings, 4U) << "equal slices are shared";
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(piece(0)));
    EXPECT_THAT(recordingsOf(pack, keyA, true), ElementsAre(piece(1)));
    EXPECT_THAT(recordingsOf(pack, keyS), ElementsAre(piece(2)));
    EXPECT_THAT(recordingsOf(pack, keyS, true), IsEmpty());
    EXPECT_THAT(recordingsOf(pack, insert), ElementsAre(piece(3)));
    EXPECT_THAT(recordingsOf(pack, keyQ), ElementsAre(piece(0)));
    EXPECT_TRUE(pack.contents.board.releaseByDefault);
    EXPECT_THAT(pack.report.notes.missing, IsEmpty());
    EXPECT_THAT(pack.report.notes.repaired, IsEmpty());
}

TEST_F(MechvibesTest, whatUsersGetWrongIsRepairedAndSaid) {
    writeStrip("pack/deeper/ALL.WAV");
    folder_.write(
        "pack/deeper/Config.TXT",
        "\xEF\xBB\xBF{\"name\": \"A, ]\", \"key_define_type\": \"single\", "
        "\"sound\": \"all.wav\", \"defines\": {\"30\": [0, 100,], \"31\": [200, 100],},}");
    const ConvertedPack pack = onlyPack(folder_ / "pack");
    EXPECT_EQ(pack.report.name, "A, ]");
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(piece(0)));
    EXPECT_THAT(pack.report.notes.repaired,
                testing::UnorderedElementsAre(
                    HasSubstr("byte order mark"), HasSubstr("comma too many"),
                    HasSubstr("\"all.wav\" is called"), HasSubstr("is the pack's \"config.json\""),
                    HasSubstr("lay in the folder \"deeper\"")));
}

TEST_F(MechvibesTest, whatIsDamagedIsNamedToTheLastKey) {
    writeStrip("pack/all.wav");
    folder_.write("pack/config.json", R"({"name": "x", "key_define_type": "single",
        "sound": "all.wav", "defines": {"30": [0, 100], "31": null, "16": [9000, 10],
        "17": "gone.wav", "18": [500, 5000], "19": 7, "20": [10, -5], "9999": [0, 100],
        "17-up": "gone.wav", "61010": [0, 100], "3666": [100, 100]}})");
    const ConvertedPack pack = onlyPack(folder_ / "pack");
    EXPECT_EQ(pack.report.keys, 3U);
    EXPECT_THAT(pack.report.silent, ElementsAre("KeyS"));
    EXPECT_THAT(recordingsOf(pack, keyS), IsEmpty()) << "a key that the pack wants silent";
    EXPECT_THAT(recordingsOf(pack, insert), ElementsAre(piece(1))) << "the standard number counts";
    EXPECT_THAT(pack.report.notes.missing,
                testing::UnorderedElementsAre(HasSubstr("\"gone.wav\""),
                                              HasSubstr("of KeyQ lies behind the end")));
    EXPECT_THAT(pack.report.notes.repaired, ElementsAre(HasSubstr("of KeyE ends where its file")));
    EXPECT_THAT(pack.report.notes.ignored,
                testing::UnorderedElementsAre(HasSubstr("\"19\""),
                                              HasSubstr("\"20\" has no length"),
                                              HasSubstr("\"9999\" names no key"),
                                              HasSubstr("\"61010\" gives Insert a second")));
    const auto substitute = [&](const std::string& key) {
        const auto found =
            std::ranges::find(pack.report.substituted, key, &PackReport::Substitute::key);
        return found == pack.report.substituted.end() ? "" : found->from;
    };
    EXPECT_EQ(substitute("KeyW"), "KeyE") << "the nearest key of its class";
    EXPECT_EQ(substitute("KeyQ"), "KeyA");
    EXPECT_EQ(substitute("KeyA"), "");
}

TEST_F(MechvibesTest, rangesOfTheSecondVersionAreVariationsAndItsFallbacksPlay) {
    for (int number = 0; number < 5; ++number) {
        writeStroke(folder_, "v2/press/G" + std::to_string(number) + ".wav", 400 + 100 * number);
    }
    writeStroke(folder_, "v2/release/G.wav", 1500);
    writeStroke(folder_, "v2/SPACE.wav", 200);
    folder_.write("v2/config.json", R"({"name": "Two", "version": 2, "key_define_type": "multi",
        "includes_numpad": true, "sound": "press/G{0-4}.wav", "soundup": "release/G.wav",
        "defines": {"57": "SPACE.wav"}})");
    const ConvertedPack pack = onlyPack(folder_ / "v2");
    EXPECT_EQ(pack.report.format, PackFormat::mechvibes2);
    EXPECT_EQ(pack.report.keys, 1U);
    EXPECT_THAT(recordingsOf(pack, keyA), SizeIs(5));
    EXPECT_EQ(recordingsOf(pack, keyA)[3], testStroke(700));
    EXPECT_THAT(recordingsOf(pack, 49), ElementsAre(testStroke(200)));
    EXPECT_THAT(recordingsOf(pack, 49, true), ElementsAre(testStroke(1500)));
    EXPECT_EQ(pack.contents.board.resolve(keyA)->sound->variations, 5);
    EXPECT_EQ(pack.contents.board.resolve(49)->sound->variations, 4) << "at least four";
    EXPECT_THAT(recordingsOf(pack, 74), SizeIs(5)) << "a key that nobody drew plays the fallback";
    EXPECT_THAT(pack.contents.board.keys, IsEmpty());
}

TEST_F(MechvibesTest, theDxFormatSaysEndsAndNotDurations) {
    writeStrip("dx/all.wav");
    folder_.write("dx/config.json", R"({"config_version": "2", "name": "DX", "author": "Ann",
        "license": "CC0", "tags": ["thock", "deep"], "definition_method": "single",
        "audio_file": "all.wav", "definitions": {
        "KeyA": {"timing": [[100.0, 200.0], [200.0, 300.0]]},
        "KeyS": {"timing": [[0, 100]]}, "MouseLeft": {"timing": [[0, 100]]},
        "Nonsense": {"timing": [[0, 100]]}, "KeyQ": {"timing": [[100, 100]]}}})");
    const ConvertedPack pack = onlyPack(folder_ / "dx");
    EXPECT_EQ(pack.report.format, PackFormat::mechvibesDx);
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(piece(1)));
    EXPECT_THAT(recordingsOf(pack, keyA, true), ElementsAre(piece(2)));
    EXPECT_THAT(recordingsOf(pack, keyS), ElementsAre(piece(0)));
    EXPECT_EQ(pack.report.keys, 2U);
    EXPECT_EQ(pack.report.author, "Ann");
    EXPECT_EQ(pack.report.licence, "CC0");
    EXPECT_THAT(pack.report.description, HasSubstr("thock, deep"));
    EXPECT_THAT(pack.report.notes.ignored,
                testing::UnorderedElementsAre(HasSubstr("\"MouseLeft\""), HasSubstr("\"Nonsense\""),
                                              HasSubstr("\"KeyQ\" has no length")));
    EXPECT_THAT(pack.contents.board.credits, ElementsAre("\"DX\", by Ann", "Licence: CC0"));
}

TEST_F(MechvibesTest, keyEchoHasWebNamesAndDurations) {
    writeStrip("echo/all.wav");
    folder_.write("echo/config.json", R"({"name": "Echo", "key_define_type": "single",
        "sound": "all.wav", "defines": {"KeyA": [100, 100], "KeyS": [200, 100]}})");
    const ConvertedPack pack = onlyPack(folder_ / "echo");
    EXPECT_EQ(pack.report.format, PackFormat::keyEcho);
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(piece(1)));
    EXPECT_THAT(recordingsOf(pack, keyS), ElementsAre(piece(2)));
}

TEST_F(MechvibesTest, twoFormatsInOneFolderAreTwoPacksAndAMousePackIsNone) {
    writeStrip("both/all.wav");
    folder_.write("both/config.json", R"({"name": "One", "sound": "all.wav",
        "defines": {"30": [0, 100]}})");
    folder_.write("both/other.json", R"({"name": "Two", "audio_file": "all.wav",
        "definitions": {"KeyA": {"timing": [[0, 100]]}}})");
    folder_.write("both/mouse/config.json", R"({"name": "Mouse", "soundpack_type": "Mouse",
        "definitions": {"MouseLeft": {"timing": [[0, 100]]}}})");
    const std::vector<FoundPack> found = packsIn(folder_ / "both");
    ASSERT_THAT(found, SizeIs(3));
    EXPECT_EQ(found[0].pack->format, PackFormat::mechvibes);
    EXPECT_EQ(found[1].pack->format, PackFormat::mechvibesDx);
    EXPECT_FALSE(found[2].pack);
    EXPECT_EQ(found[2].error, "It holds the sounds of a mouse.");
}

TEST_F(MechvibesTest, aLicenceInTheFolderIsCreditedAndNoneIsSaid) {
    writeStrip("pack/all.wav");
    folder_.write("pack/LICENSE", "Made by Bo.\n\nUse it freely.\n");
    folder_.write("pack/config.json", R"({"name": "x", "sound": "all.wav",
        "defines": {"30": [0, 100]}})");
    EXPECT_THAT(onlyPack(folder_ / "pack").contents.board.credits,
                ElementsAre("\"x\", author not stated", "Licence: none stated", "Made by Bo.",
                            "Use it freely."));
}

} // namespace
} // namespace vornic
