#include "tests/VornicCore/foreign/PackMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vornic {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t escape = 53;
constexpr std::int64_t digit1 = 18;
constexpr std::int64_t space = 49;
constexpr std::int64_t enter = 36;

class OtherFormatsTest : public testing::Test {
  protected:
    /// "1.wav" to "9.wav" in `folder`, each of its own pitch.
    void writeStrokes(const std::string& folder) const {
        for (int number = 1; number <= 9; ++number) {
            writeStroke(folder_, folder + "/" + std::to_string(number) + ".wav", pitch(number));
        }
    }
    static double pitch(int number) { return 300 + 100.0 * number; }
    static std::vector<float> stroke(int number) { return testStroke(pitch(number)); }

    ScratchFolder folder_;
};

TEST_F(OtherFormatsTest, keyboardSoundsHasSourcesForKeysOfEitherGenerationsNames) {
    writeStrokes("kbs");
    folder_.write("kbs/profile.yaml", R"(
profile:
  name: Typer
  author: Cy
sources:
  - id: plain
    source: 1.wav
  - id: both
    source: {press: 2.wav, release: 3.wav}
  - id: other
    source:
      press: 4.wav
keys:
  default: [plain, both]
  other:
    - sound: both
      keys: [space, shift_l, LeftCtrl, PageUp, nonsense]
    - sound: [other, gone]
      keys: ['1', caps_lock]
)");
    const ConvertedPack pack = onlyPack(folder_ / "kbs");
    EXPECT_EQ(pack.report.format, PackFormat::keyboardSounds);
    EXPECT_EQ(pack.report.name, "Typer");
    EXPECT_EQ(pack.report.author, "Cy");
    EXPECT_EQ(pack.report.keys, 6U);
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(stroke(1), stroke(2)));
    EXPECT_THAT(recordingsOf(pack, keyA, true), ElementsAre(stroke(3)));
    for (const std::int64_t key : {49, 56, 59, 116}) {
        EXPECT_THAT(recordingsOf(pack, key), ElementsAre(stroke(2))) << key;
        EXPECT_THAT(recordingsOf(pack, key, true), ElementsAre(stroke(3))) << key;
    }
    EXPECT_THAT(recordingsOf(pack, digit1), ElementsAre(stroke(4)));
    EXPECT_THAT(recordingsOf(pack, 57), ElementsAre(stroke(4)));
    EXPECT_THAT(pack.report.notes.missing, ElementsAre(HasSubstr("\"gone\"")));
    EXPECT_THAT(pack.report.notes.ignored, ElementsAre(HasSubstr("\"nonsense\"")));
}

TEST_F(OtherFormatsTest, keyboardSoundsWithoutKeysPlaysAllSources) {
    writeStrokes("kbs");
    folder_.write("kbs/profile.yaml", "profile: {name: All}\nsources:\n"
                                      "  - {id: a, source: 1.wav}\n  - {id: b, source: 2.wav}\n");
    EXPECT_THAT(recordingsOf(onlyPack(folder_ / "kbs"), keyA), ElementsAre(stroke(1), stroke(2)));
}

TEST_F(OtherFormatsTest, yamlThatRefersToItselfOrIsNoneIsRefused) {
    const auto error = [&](const std::string& text) {
        folder_.write("kbs/profile.yaml", "sources: 1\nsource: 1\n" + text);
        const std::vector<FoundPack> found = packsIn(folder_ / "kbs");
        return found.size() == 1 ? found[0].error : "not found";
    };
    EXPECT_THAT(error("a: &a [1]\nb: [*a, *a]\n"), HasSubstr("refers to itself"));
    EXPECT_THAT(error("x: " + std::string(40, '[') + std::string(40, ']')),
                HasSubstr("nested too deep"));
    EXPECT_THAT(error("}{"), HasSubstr("no YAML"));
}

TEST_F(OtherFormatsTest, bucklespringNamesItsFilesByTheKernelsCodes) {
    writeStroke(folder_, "wav/1e-1.wav", 500);
    writeStroke(folder_, "wav/1e-0.wav", 600);
    writeStroke(folder_, "wav/31-1.wav", 700);
    writeStroke(folder_, "wav/39-1.WAV", 800);
    writeStroke(folder_, "wav/ff-1.wav", 900);
    const ConvertedPack pack = onlyPack(folder_ / "wav");
    EXPECT_EQ(pack.report.format, PackFormat::bucklespring);
    EXPECT_EQ(pack.report.keys, 3U);
    EXPECT_EQ(pack.report.releases, 1U);
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(testStroke(500)));
    EXPECT_THAT(recordingsOf(pack, keyA, true), ElementsAre(testStroke(600)));
    EXPECT_THAT(recordingsOf(pack, space), ElementsAre(testStroke(800)));
    EXPECT_THAT(recordingsOf(pack, enter), ElementsAre(testStroke(700))) << "as N";
    EXPECT_THAT(pack.report.notes.ignored, ElementsAre(HasSubstr("mouse")));
}

TEST_F(OtherFormatsTest, neptuneNamesItsFilesByWords) {
    for (const auto& [name, hertz] : {std::pair("space", 300),
                                      {"space-up", 400},
                                      {"enter", 500},
                                      {"fallback", 600},
                                      {"fallback2", 700},
                                      {"fallback-up", 800},
                                      {"other", 900}}) {
        writeStroke(folder_, std::string("n/") + name + ".wav", hertz);
    }
    folder_.write("n/config.json", R"({"name": "Nep", "support-events": true})");
    const ConvertedPack pack = onlyPack(folder_ / "n");
    EXPECT_EQ(pack.report.format, PackFormat::neptune);
    EXPECT_THAT(recordingsOf(pack, space), ElementsAre(testStroke(300)));
    EXPECT_THAT(recordingsOf(pack, space, true), ElementsAre(testStroke(400)));
    EXPECT_THAT(recordingsOf(pack, enter), ElementsAre(testStroke(500)));
    EXPECT_THAT(recordingsOf(pack, enter, true), ElementsAre(testStroke(800)));
    EXPECT_THAT(recordingsOf(pack, 51), ElementsAre(testStroke(600), testStroke(700)));
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(testStroke(600), testStroke(700)));
    EXPECT_THAT(pack.report.notes.ignored, ElementsAre(HasSubstr("\"other.wav\"")));
}

TEST_F(OtherFormatsTest, daktiloSearchesForItsExpressionsInTheNamesOfKeys) {
    writeStrokes("d");
    folder_.write("d/daktilo.toml", R"(
[[sound_preset]]
name = "typewriter"
disabled_keys = ["CapsLock"]
key_config = [
  { event = "press", keys = "Return", files = [{ path = "1.wav", volume = 0.1 }] },
  { event = "press", keys = "Key*|Num1$", files = [{ path = "/x/y/2.wav" }, { path = "3.wav" }], strategy = "random", variation = { tempo = [0.1, 0.1] } },
  { event = "release", keys = ".*", files = [{ path = "4.wav" }] },
  { event = "press", keys = ".*", files = [{ path = "5.wav" }] },
  { event = "press", keys = "(", files = [{ path = "5.wav" }] },
]
[[sound_preset]]
name = "second"
key_config = [{ event = "press", keys = ".*", files = [{ path = "6.wav" }] }]
)");
    const auto files = opened(folder_ / "d");
    const std::vector<FoundPack> found = findPacks(*files);
    ASSERT_THAT(found, SizeIs(2));
    const ConvertedPack pack = convertedFrom(*files, found[0]);
    EXPECT_EQ(pack.report.name, "typewriter");
    EXPECT_THAT(recordingsOf(pack, enter), ElementsAre(stroke(1)));
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(stroke(2), stroke(3)));
    EXPECT_THAT(recordingsOf(pack, keyA, true), ElementsAre(stroke(4)));
    EXPECT_THAT(recordingsOf(pack, digit1), ElementsAre(stroke(2), stroke(3)));
    EXPECT_THAT(recordingsOf(pack, 19), ElementsAre(stroke(5)));
    EXPECT_THAT(recordingsOf(pack, 57), IsEmpty());
    EXPECT_THAT(pack.report.silent, ElementsAre("CapsLock"));
    EXPECT_THAT(pack.report.notes.ignored,
                UnorderedElementsAre(HasSubstr("\"(\""), HasSubstr("variation")));
    EXPECT_EQ(convertedFrom(*files, found[1]).report.name, "second");
}

TEST_F(OtherFormatsTest, sfzInheritsIncludesDefinesAndCutsByFrames) {
    writeStrokes("s/my samples");
    folder_.write("s/part.sfz", "<region> key=$NOTE sample=3.wav trigger=release\n");
    folder_.write("s/board.sfz", R"(// a keyboard
<control> default_path=my samples/ label_key36=KeyA label_key38=Space
#define $NOTE 36
<global> lovel=0 hivel=63 /* quiet
and more */
<group> key=36
<region> sample=1.wav offset=96 end=2399 volume=-6
<region> sample=2.wav lovel=64 hivel=127
)"
                                 "#include \"part.sfz\"\n"
                                 R"(<group>
<region> sample=4.wav key=d2 pan=20 ampeg_release=1
<region> sample=5.wav key=99
<region> sample=6.wav key=36 trigger=legato
<region> sample=*sine key=36
<region> sample=gone.wav key=36
)");
    const auto files = opened(folder_ / "s");
    std::vector<FoundPack> all = findPacks(*files);
    ASSERT_THAT(all, SizeIs(2)) << "the included part looks like an instrument too";
    const ConvertedPack pack = convertedFrom(*files, all[0]);
    EXPECT_EQ(pack.report.name, "board");
    EXPECT_EQ(pack.report.keys, 2U);
    const std::vector<float> whole = stroke(1);
    EXPECT_THAT(recordingsOf(pack, keyA),
                ElementsAre(std::vector(whole.begin() + 96, whole.begin() + 2400), stroke(2)));
    EXPECT_THAT(recordingsOf(pack, keyA, true), ElementsAre(stroke(3)));
    EXPECT_THAT(recordingsOf(pack, space), ElementsAre(stroke(4)));
    EXPECT_THAT(pack.report.notes.missing, ElementsAre(HasSubstr("gone.wav")));
    EXPECT_THAT(pack.report.notes.ignored,
                UnorderedElementsAre(HasSubstr("without a recording"), HasSubstr("\"pan\""),
                                     HasSubstr("\"ampeg_release\""), HasSubstr("\"legato\""),
                                     HasSubstr("Note 99")));
    EXPECT_THAT(pack.report.notes.remarks, testing::Contains(HasSubstr("2 velocities")));
}

TEST_F(OtherFormatsTest, notesWithoutNamesFollowTheScanCodesFromTheNoteThatIsAsked) {
    writeStrokes("s");
    folder_.write("s/b.sfz", "<region> sample=1.wav key=40 <region> sample=2.wav key=41\n"
                             "<region> sample=3.wav lokey=42 hikey=43 pitch_keycenter=42\n");
    const ConvertedPack pack = onlyPack(folder_ / "s");
    EXPECT_THAT(recordingsOf(pack, escape), ElementsAre(stroke(1)));
    EXPECT_THAT(recordingsOf(pack, digit1), ElementsAre(stroke(2)));
    EXPECT_THAT(recordingsOf(pack, 20), ElementsAre(stroke(3)));
    EXPECT_EQ(pack.contents.board.resolve(20)->sound->press.layers[0].pitch, 1);
    EXPECT_THAT(pack.report.notes.remarks, ElementsAre(HasSubstr("note 40 is Escape")));
    const ConvertedPack asked = onlyPack(folder_ / "s", {.firstNote = 39});
    EXPECT_THAT(recordingsOf(asked, digit1), ElementsAre(stroke(1)));
    folder_.write("s/b.sfz", "<region> sample=1.wav pitch_keytrack=0 <region> sample=2.wav "
                             "pitch_keytrack=0\n");
    EXPECT_THAT(recordingsOf(onlyPack(folder_ / "s"), keyA), ElementsAre(stroke(1), stroke(2)))
        << "what every note plays every key plays";
}

TEST_F(OtherFormatsTest, sfzThatIncludesItselfEnds) {
    folder_.write("s/a.sfz", "<region> sample=1.wav\n#include \"a.sfz\"\n");
    const std::vector<FoundPack> found = packsIn(folder_ / "s");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].error, HasSubstr("without end"));
}

TEST_F(OtherFormatsTest, decentSamplerInheritsFromGroups) {
    writeStrokes("ds/Samples");
    folder_.write("ds/board.dspreset", R"(<?xml version="1.0"?>
<DecentSampler><groups volume="-6dB">
 <group tags="KeyA" rootNote="36" seqMode="round_robin">
  <sample path="Samples/1.wav" seqPosition="1"/><sample path="Samples/2.wav" seqPosition="2"/>
  <sample path="Samples/3.wav" trigger="release"/></group>
 <group><sample path="Samples/4.wav" rootNote="40" tags="Space" start="96" end="2399"
   volume="0.5"/><sample path="gone.wav" rootNote="40"/></group>
</groups></DecentSampler>)");
    const ConvertedPack pack = onlyPack(folder_ / "ds");
    EXPECT_EQ(pack.report.format, PackFormat::decentSampler);
    EXPECT_THAT(recordingsOf(pack, keyA), ElementsAre(stroke(1), stroke(2)));
    EXPECT_THAT(recordingsOf(pack, keyA, true), ElementsAre(stroke(3)));
    const std::vector<float> whole = stroke(4);
    EXPECT_THAT(recordingsOf(pack, space),
                ElementsAre(std::vector(whole.begin() + 96, whole.begin() + 2400)));
    EXPECT_THAT(pack.report.notes.missing, ElementsAre(HasSubstr("gone.wav")));
    folder_.write("ds/board.dspreset", "<DecentSampler><groups><group>");
    EXPECT_THAT(packsIn(folder_ / "ds").at(0).error, HasSubstr("no XML"));
}

} // namespace
} // namespace vornic
