#include "Vornic/commands/SliceCommand.h"

#include "Vornic/commands/CommandLine.h"
#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/strokes/Slicer.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <stdexcept>
#include <variant>

namespace vornic {
namespace {

using Json = nlohmann::json;

class SliceCommandTest : public testing::Test {
  protected:
    // Four strokes: the third runs into the fourth and is not clean.
    SliceCommandTest() {
        TypingNoise typing(2, 48000, 1e-3F);
        typing.hit(0.3, 0.2F).hit(0.8, 0.8F).hit(1.2, 0.4F, 0.03).hit(1.26, 0.4F);
        writeWAV(typing.samples(), file_);
    }

    static SliceReport slice(SliceRequest request) {
        request.decoder = VORNIC_DECODER;
        return sliceFile(request);
    }

    ScratchFolder folder_;
    std::filesystem::path file_ = folder_ / "typing.wav";
};

std::vector<std::string> namesOf(const SliceReport& report) {
    std::vector<std::string> names;
    for (const auto& file : report.files) {
        names.push_back(file.filename().string());
    }
    return names;
}

TEST_F(SliceCommandTest, reportsEveryStrokeInOrderOfOnsetsWithItsPlaceAmongTheBest) {
    const Json json = Json::parse(reportAsJson(slice({.file = file_})));
    EXPECT_EQ(json.size(), 2U);
    EXPECT_EQ(json.at("found"), 4);
    const Json& strokes = json.at("strokes");
    ASSERT_EQ(strokes.size(), 4U);
    const auto expected = Slicer::strokes(loadAudio(file_).value(), 48000);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(strokes[i].size(), 5U);
        EXPECT_EQ(strokes[i].at("start"), expected[i].start);
        EXPECT_EQ(strokes[i].at("snrDb"), expected[i].snrDb);
        EXPECT_EQ(strokes[i].at("clean"), i != 2);
        EXPECT_EQ(strokes[i].at("frames"), expected[i].samples.size());
    }
    EXPECT_EQ(strokes[0].at("rank"), 3);
    EXPECT_EQ(strokes[1].at("rank"), 1);
    EXPECT_TRUE(strokes[2].at("rank").is_null());
    EXPECT_EQ(strokes[3].at("rank"), 2);
}

TEST_F(SliceCommandTest, keepsTheOrderOfTheMembers) {
    SliceReport report;
    EXPECT_EQ(reportAsJson(report), R"({"found":0,"strokes":[]})");
    report.strokes.push_back({0.5, 40.25, true, 100, 1});
    const std::string text = reportAsJson(report);
    EXPECT_EQ(text, R"({"found":1,"strokes":[{"start":0.5,"snrDb":40.25,"clean":true,)"
                    R"("frames":100,"rank":1}]})");
}

TEST_F(SliceCommandTest, writesTheChosenStrokesFinished) {
    const SliceReport report = slice({.file = file_, .out = folder_ / "a/b"});
    EXPECT_EQ(namesOf(report),
              (std::vector<std::string>{"stroke-01.wav", "stroke-02.wav", "stroke-04.wav"}));
    const auto strokes = Slicer::strokes(loadAudio(file_).value(), 48000);
    const auto expected = folder_ / "expected.wav";
    writeWAV(Slicer::finish(strokes[1].samples), expected);
    EXPECT_EQ(readBytes(report.files[1]), readBytes(expected));
}

TEST_F(SliceCommandTest, writesAllStrokesWhenAskedTo) {
    const SliceReport report = slice({.file = file_, .all = true, .out = folder_ / "out"});
    EXPECT_EQ(namesOf(report), (std::vector<std::string>{"stroke-01.wav", "stroke-02.wav",
                                                         "stroke-03.wav", "stroke-04.wav"}));
}

TEST_F(SliceCommandTest, writesNothingUnlessAskedTo) {
    EXPECT_TRUE(slice({.file = file_, .all = true}).files.empty());
}

TEST_F(SliceCommandTest, saysWhyThereIsNothingToChooseFrom) {
    writeWAV(std::vector<float>(48000), file_);
    const SliceReport silent = slice({.file = file_});
    EXPECT_TRUE(silent.strokes.empty());
    EXPECT_EQ(
        silent.remarks,
        std::vector<std::string>{"No keystrokes found. Press keys one at a time, a little apart."});
    writeWAV(TypingNoise(1, 48000, 1e-3F).hit(0.96, 0.3F).samples(), file_);
    const SliceReport noisy = slice({.file = file_, .out = folder_ / "out"});
    EXPECT_EQ(noisy.strokes.size(), 1U);
    EXPECT_TRUE(noisy.files.empty());
    EXPECT_EQ(noisy.remarks,
              std::vector<std::string>{"The keystrokes were too quiet or too close together. Try "
                                       "again nearer the mic, one key at a time."});
}

TEST_F(SliceCommandTest, saysWhichFileItCannotReadOrWrite) {
    EXPECT_THROW(
        {
            try {
                slice({.file = folder_.write("text.wav", "no sound")});
            } catch (const std::runtime_error& error) {
                const std::string message = error.what();
                EXPECT_NE(message.find("text.wav: Couldn't read that file. It is no audio file"),
                          std::string::npos)
                    << message;
                throw;
            }
        },
        std::runtime_error);
    EXPECT_THROW(slice({.file = file_, .out = folder_.write("file", "") / "x"}),
                 std::runtime_error);
}

TEST_F(SliceCommandTest, printsATableWithoutJson) {
    const std::string text = reportAsText(slice({.file = file_}));
    EXPECT_NE(text.find("  0.300 s"), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with("4 keystrokes found\n")) << text;
}

TEST(SliceCommandLine, takesAFileAndItsOptions) {
    const auto request =
        readCommandLine({"slice", "a.wav", "--all", "--out", "there", "--json"}, "packs");
    const auto* slice = std::get_if<SliceCommandRequest>(&request);
    ASSERT_NE(slice, nullptr);
    EXPECT_EQ(slice->slice.file, "a.wav");
    EXPECT_TRUE(slice->slice.all);
    EXPECT_EQ(slice->slice.out, "there");
    EXPECT_TRUE(slice->json);
    const auto plain = readCommandLine({"slice", "a.wav"}, "packs");
    EXPECT_EQ(std::get<SliceCommandRequest>(plain).slice.out, std::nullopt);
    EXPECT_EQ(std::get<PrintRequest>(readCommandLine({"slice"}, "packs")).status, 2);
}

} // namespace
} // namespace vornic
