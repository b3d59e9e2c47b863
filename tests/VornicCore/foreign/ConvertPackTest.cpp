#include "VornicCore/foreign/ConvertPack.h"

#include "VornicCore/board/BoardJson.h"
#include "VornicCore/render/BoardLoudness.h"
#include "VornicCore/render/BuildBoard.h"
#include "tests/VornicCore/foreign/PackMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace vornic {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyS = 1;

/// The recordings of a converted pack, for the renderer.
class Contents final : public SampleSource {
  public:
    explicit Contents(const ConvertedPack& pack) : pack_(pack) {}
    std::optional<std::vector<float>> samples(const std::string& id) const override {
        const auto found = pack_.contents.samples.find(id);
        return found == pack_.contents.samples.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    const ConvertedPack& pack_;
};

ForeignPack packOf(const std::map<std::int64_t, ForeignKey>& keys) {
    ForeignPack pack;
    pack.name = "Made";
    pack.keys = keys;
    return pack;
}

ForeignKey fileKey(const std::string& file) {
    return {.press = {{.file = file}}, .release = {}};
}

double gainOf(const ConvertedPack& pack, std::int64_t key) {
    return pack.contents.board.resolve(key)->assignment.gainDb;
}

TEST(ConvertPack, differencesOfLoudnessBetweenKeysBecomeTheirGains) {
    const PackAudioFiles audio{{"loud", {48000, testStroke(500, 0.8F)}},
                               {"faint", {48000, testStroke(500, 0.08F)}}};
    const ConvertedPack pack =
        convertPack(packOf({{keyA, fileKey("loud")}, {keyS, fileKey("faint")}}), audio);
    EXPECT_NEAR(gainOf(pack, keyA) - gainOf(pack, keyS), 20, 0.05);
}

TEST(ConvertPack, theBoardIsAsLoudAsTheOthers) {
    for (const float level : {0.9F, 0.003F}) {
        PackAudioFiles audio{{"a", {48000, testStroke(300, level)}},
                             {"b", {48000, testStroke(2000, level / 4)}}};
        const ConvertedPack pack =
            convertPack(packOf({{keyA, fileKey("a")}, {keyS, fileKey("b")}}), audio);
        const auto rendered = buildBoard(pack.contents.board, Contents(pack), 1);
        const std::optional<double> loudness = boardLoudness(pack.contents.board, *rendered.bank);
        ASSERT_TRUE(loudness);
        EXPECT_NEAR(*loudness, convertedLoudness, 1);
        EXPECT_THAT(rendered.messages, IsEmpty());
    }
}

TEST(ConvertPack, keysThatSoundAlikeAreTheirGroupsAndTheRestSingleKeys) {
    PackAudioFiles audio{{"a", {48000, testStroke(300)}}, {"b", {48000, testStroke(700)}}};
    std::map<std::int64_t, ForeignKey> keys;
    for (const std::int64_t code : {0, 1, 2, 3, 18, 19, 20, 49, 36, 51, 56}) {
        keys[code] = fileKey("a");
    }
    keys[5] = fileKey("b");
    ForeignPack source = packOf(keys);
    source.fallback = fileKey("a");
    const Board board = convertPack(source, audio).contents.board;
    EXPECT_THAT(board.sounds, SizeIs(2));
    ASSERT_THAT(board.keys, SizeIs(1));
    EXPECT_EQ(board.keys.begin()->first, "5");
    EXPECT_EQ(board.groups.size(), 8U);
    EXPECT_EQ(decodeBoard(encodeBoard(board)), board);
}

TEST(ConvertPack, aCutThroughSoundIsFadedAndOneAtRestIsNot) {
    std::vector<float> tone(48000);
    for (std::size_t at = 0; at < tone.size(); ++at) {
        tone[at] =
            at >= 24000 && at < 28800 ? 0.0F : 0.5F * std::sin(static_cast<float>(at) * 0.1F);
    }
    const PackAudioFiles audio{{"tone", {48000, tone}}};
    ForeignKey through{.press = {{.file = "tone", .begin = 100, .end = 200}}, .release = {}};
    ForeignKey resting{.press = {{.file = "tone", .begin = 550, .end = 700}}, .release = {}};
    const ConvertedPack pack = convertPack(packOf({{keyA, through}, {keyS, resting}}), audio);
    const std::vector<float> cut = recordingsOf(pack, keyA).at(0);
    ASSERT_THAT(cut, SizeIs(4800));
    EXPECT_EQ(cut[0], 0);
    EXPECT_NEAR(cut[24], tone[4824] * 0.5F, 1e-3);
    EXPECT_EQ(cut[48], tone[4848]) << "the fade is 1 ms";
    EXPECT_EQ(cut[4799], 0);
    EXPECT_EQ(cut[4751], tone[9551]);
    const std::vector<float> rest = recordingsOf(pack, keyS).at(0);
    EXPECT_EQ(rest[0], tone[26400]);
    EXPECT_TRUE(std::equal(rest.begin(), rest.end() - 48, tone.begin() + 26400));
}

TEST(ConvertPack, framesCountAtTheFilesOwnRate) {
    std::vector<float> samples(48000);
    samples[4800] = 0.9F;
    const PackAudioFiles audio{{"a", {24000, samples}}};
    ForeignKey key{.press = {{.file = "a", .unit = ForeignTake::Unit::frames, .begin = 2400}},
                   .release = {}};
    EXPECT_EQ(recordingsOf(convertPack(packOf({{keyA, key}}), audio), keyA).at(0)[0], 0.9F);
}

TEST(ConvertPack, lossesAreSaid) {
    const PackAudioFiles audio{{"loud", {48000, testStroke(500, 0.8F)}},
                               {"faint", {48000, testStroke(500, 0.08F)}},
                               {"long", {48000, std::vector<float>(300'000, 0.25F)}},
                               {"still", {48000, std::vector<float>(4800)}}};
    ForeignKey key{.press = {{.file = "loud"}, {.file = "faint"}}, .release = {{.file = "faint"}}};
    const ConvertedPack pack =
        convertPack(packOf({{keyA, key}, {keyS, fileKey("long")}, {2, fileKey("still")}}), audio);
    EXPECT_THAT(pack.report.notes.remarks,
                testing::UnorderedElementsAre(HasSubstr("differ by up to 20 dB"),
                                              HasSubstr("KeyS is cut after 5 seconds"),
                                              HasSubstr("Releases, in the pack 10 dB fainter")));
    EXPECT_THAT(pack.report.notes.ignored, testing::ElementsAre(HasSubstr("KeyD holds no sound")));
    EXPECT_EQ(pack.report.keys, 2U);
    EXPECT_GT(pack.report.boardBytes, 2U * 240'000 * 4 / 3);
}

TEST(ConvertPack, aPackWithoutAReadableRecordingIsNone) {
    EXPECT_THROW(convertPack(packOf({{keyA, fileKey("gone")}}), {}), ForeignPackError);
}

TEST(PackReport, saysTheSameAsTextAndAsJson) {
    const PackAudioFiles audio{{"a", {48000, testStroke(300)}}};
    ForeignPack source = packOf({{keyA, fileKey("a")}});
    source.author = "\x1b[2JAnn\xff";
    source.notes.missing = {"The file \"x\"."};
    const PackReport report = convertPack(source, audio).report;
    const nlohmann::json json = nlohmann::json::parse(reportAsJson(report));
    EXPECT_EQ(json["format"], "mechvibes");
    EXPECT_EQ(json["keys"], 1);
    EXPECT_EQ(json["licence"], nullptr);
    EXPECT_EQ(json["missing"][0], "The file \"x\".");
    const std::string text = reportAsText(report);
    EXPECT_THAT(text, HasSubstr("licence: none stated"));
    EXPECT_THAT(text, HasSubstr("1 key, 0 releases, 1 recording, 1 sound"));
    EXPECT_THAT(text, HasSubstr("missing: The file \"x\"."));
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
}

} // namespace
} // namespace vornic
