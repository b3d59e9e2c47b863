#include "VornicCore/board/BoardFile.h"

#include "VornicCore/base/Base64.h"
#include "tests/VornicCore/board/RandomBoard.h"
#include "tests/VornicCore/render/MapSource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <numeric>

namespace vornic {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::FloatEq;
using testing::IsEmpty;

Board board() {
    return {"mine-1", "Mine", "A board", "#123456", BuildParts{}, {}, {}};
}

/// The integers that pcm16 gives for the samples.
std::vector<int> integers(std::span<const float> samples) {
    const std::vector<std::byte> bytes = BoardFile::pcm16(samples);
    std::vector<int> result;
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        const int bits = std::to_integer<int>(bytes[at]) | std::to_integer<int>(bytes[at + 1]) << 8;
        result.push_back(bits < 32768 ? bits : bits - 65536);
    }
    return result;
}

std::vector<std::byte> bytes(std::initializer_list<int> values) {
    std::vector<std::byte> result;
    for (const int value : values) {
        result.push_back(static_cast<std::byte>(value));
    }
    return result;
}

json fileWith(const json& samples) {
    return {{"format", "vornic-board"},
            {"version", 1},
            {"board", json::parse(BoardFile::encode(board(), {}, MapSource({})))["board"]},
            {"samples", samples}};
}

TEST(BoardFile, fullScaleAndBeyondWrites32767OnEitherSide) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_THAT(integers(std::vector{1.0F, 1.5F, infinity, -1.0F, -1.5F, -infinity}),
                ElementsAre(32767, 32767, 32767, -32767, -32767, -32767));
}

TEST(BoardFile, samplesAreRoundedTowardZero) {
    EXPECT_THAT(integers(std::vector{0.5F, -0.5F, 0.00003F, -0.00003F, 0.9999999F}),
                ElementsAre(16383, -16383, 0, 0, 32766));
}

TEST(BoardFile, aSampleThatIsNoNumberIsSilence) {
    EXPECT_THAT(integers(std::vector{std::nanf(""), -std::nanf("")}), ElementsAre(0, 0));
}

TEST(BoardFile, integersAreLittleEndian) {
    EXPECT_EQ(BoardFile::pcm16(std::vector{0.5F, -1.0F}), bytes({0xff, 0x3f, 0x01, 0x80}));
}

TEST(BoardFile, everySixteenBitSampleButTheLowestSurvivesTheRoundTrip) {
    std::vector<int> all(65535);
    std::iota(all.begin(), all.end(), -32767);
    std::vector<float> samples;
    for (const int each : all) {
        samples.push_back(static_cast<float>(each) / 32767.0F);
    }
    EXPECT_EQ(integers(samples), all);
    EXPECT_EQ(BoardFile::floats(BoardFile::pcm16(samples)), samples);
}

TEST(BoardFile, theLowestIntegerReadsAsSlightlyBelowMinusOne) {
    EXPECT_THAT(BoardFile::floats(bytes({0x00, 0x80})), ElementsAre(-32768.0F / 32767.0F));
    EXPECT_LT(BoardFile::floats(bytes({0x00, 0x80}))[0], -1.0F);
}

TEST(BoardFile, anOddByteAtTheEndIsIgnored) {
    EXPECT_THAT(BoardFile::floats(bytes({0xff, 0x7f, 0x12})), ElementsAre(1.0F));
    EXPECT_THAT(BoardFile::floats(bytes({0x12})), IsEmpty());
    EXPECT_THAT(BoardFile::floats({}), IsEmpty());
}

TEST(BoardFile, isWrittenWithSortedKeysAndIndentation) {
    const std::string text = BoardFile::encode(board(), std::vector<std::string>{"user/a"},
                                               MapSource({{"user/a", {0.5F, -1.0F}}}));
    const json document = json::parse(text);
    EXPECT_EQ(document["format"], "vornic-board");
    EXPECT_EQ(document["version"], 1);
    EXPECT_EQ(document["board"]["name"], "Mine");
    EXPECT_EQ(document["samples"], (json{{"user/a", "/z8BgA=="}}));
    // This library sorts members too.
    EXPECT_EQ(text, document.dump(2));
}

TEST(BoardFile, anIdThatTheSourceLacksIsAbsentAndTheBoardStillNamesIt) {
    Board mine = board();
    SoundSpec sound;
    sound.id = "keys";
    sound.press.layers = {LayerSpec(LayerPart::bottomOut, {"user/a", "user/gone"}, 0, 0, 0)};
    mine.sounds = {sound};
    const std::string text = BoardFile::encode(
        mine, std::vector<std::string>{"user/gone", "user/a"}, MapSource({{"user/a", {0.5F}}}));
    EXPECT_EQ(json::parse(text)["samples"].size(), 1U);
    const BoardFile::Contents contents = BoardFile::decode(text);
    EXPECT_EQ(contents.board, mine);
    EXPECT_FALSE(contents.samples.contains("user/gone"));
    EXPECT_TRUE(contents.samples.contains("user/a"));
}

TEST(BoardFile, withoutAnythingToEmbedItsSamplesAreAnEmptyObject) {
    const MapSource source({{"user/a", {0.5F}}});
    const json document = json::parse(BoardFile::encode(board(), {}, source));
    EXPECT_EQ(document["samples"], json::object());
}

TEST(BoardFile, anEmptyRecordingAndARepeatedIdAreHarmless) {
    const MapSource source({{"empty", {}}, {"user/a", {0.5F}}});
    const std::vector<std::string> ids{"user/a", "empty", "user/a"};
    const json document = json::parse(BoardFile::encode(board(), ids, source));
    EXPECT_EQ(document["samples"], (json{{"empty", ""}, {"user/a", "/z8="}}));
    const auto contents = BoardFile::decode(document.dump());
    EXPECT_THAT(contents.samples.at("empty"), IsEmpty());
}

TEST(BoardFile, aFormatThatDiffersInAnyWayIsRejected) {
    json file = fileWith(json::object());
    ASSERT_NO_THROW(BoardFile::decode(file.dump()));
    for (const std::string format : {"vornic-board ", " vornic-board", "Vornic-board",
                                     "vornic-boards", "vornic-boar", "vornic_board", ""}) {
        file["format"] = format;
        try {
            BoardFile::decode(file.dump());
            ADD_FAILURE() << format;
        } catch (const DecodeError& error) {
            EXPECT_EQ(error.path(), "format");
        }
    }
    file["format"] = "vornic-board ";
    EXPECT_THROW(
        {
            try {
                BoardFile::decode(file.dump());
            } catch (const DecodeError& error) {
                EXPECT_STREQ(error.what(), "format: expected \"vornic-board\", found "
                                           "\"vornic-board \"");
                throw;
            }
        },
        DecodeError);
}

TEST(BoardFile, everyVersionIsAcceptedButItHasToBeAnInteger) {
    json file = fileWith(json::object());
    for (const std::int64_t version : {7, 0, -3}) {
        file["version"] = version;
        EXPECT_EQ(BoardFile::decode(file.dump()).board, board());
    }
    for (const json& version : {json("1"), json(1.5), json(nullptr), json(true)}) {
        file["version"] = version;
        EXPECT_THROW(BoardFile::decode(file.dump()), DecodeError) << version;
    }
}

TEST(BoardFile, everyMemberIsRequired) {
    const json whole = fileWith(json::object());
    for (const std::string member : {"format", "version", "board", "samples"}) {
        json file = whole;
        file.erase(member);
        try {
            BoardFile::decode(file.dump());
            ADD_FAILURE() << member;
        } catch (const DecodeError& error) {
            EXPECT_EQ(error.path(), member);
        }
    }
    json file = whole;
    file["board"].erase("credits");
    EXPECT_THROW(BoardFile::decode(file.dump()), DecodeError);
    file = whole;
    file["later"] = {1, 2, 3};
    EXPECT_NO_THROW(BoardFile::decode(file.dump())) << "what later versions add is ignored";
}

TEST(BoardFile, anEntryThatIsNoBase64IsSkippedAndTheOthersAreRead) {
    const auto contents = BoardFile::decode(
        fileWith({{"a", "/z8="}, {"b", "/z8"}, {"c", "not base64!"}, {"d", "/3+A"}}).dump());
    EXPECT_EQ(contents.samples.size(), 2U);
    EXPECT_THAT(contents.samples.at("a"), ElementsAre(FloatEq(16383.0F / 32767.0F)));
    EXPECT_THAT(contents.samples.at("d"), ElementsAre(1.0F)) << "an odd byte is left over";
}

TEST(BoardFile, anEntryThatIsNoTextFailsWithItsPlace) {
    try {
        BoardFile::decode(fileWith({{"user/a", 7}}).dump());
        ADD_FAILURE();
    } catch (const DecodeError& error) {
        EXPECT_STREQ(error.what(), "samples.user/a: expected a string, found a number");
    }
}

TEST(BoardFile, keepsEveryFieldOfEveryBoardAndEverySample) {
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        RandomBoard random(seed);
        const Board mine = random.board();
        MapSource source({});
        std::vector<std::string> ids;
        for (std::uint64_t i = 0; i < seed % 4; ++i) {
            ids.push_back(random.text() + std::to_string(i));
            for (std::uint64_t frame = 0; frame < seed; ++frame) {
                const auto integer = static_cast<std::int64_t>((frame * 7919 + i) % 65535) - 32767;
                source.recordings[ids.back()].push_back(static_cast<float>(integer) / 32767.0F);
            }
        }
        const std::string text = BoardFile::encode(mine, ids, source);
        const BoardFile::Contents contents = BoardFile::decode(text);
        ASSERT_EQ(contents.board, mine) << seed;
        for (const auto& [id, samples] : source.recordings) {
            ASSERT_EQ(contents.samples.at(id), samples) << seed;
        }
        ASSERT_EQ(BoardFile::encode(contents.board, ids, source), text) << seed;
    }
}

} // namespace
} // namespace vornic
