#include "VornicCore/audiofiles/WriteWav.h"

#include "VornicCore/audiofiles/LoadAudio.h"
#include "tests/support/ScratchFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace vornic {
namespace {

using testing::ElementsAre;

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) {
        text.push_back(static_cast<char>(value));
    }
    return text;
}

std::vector<int> writtenIntegers(const std::vector<float>& samples) {
    const ScratchFolder folder;
    writeWAV(samples, folder / "a.wav");
    const std::string data = readBytes(folder / "a.wav").substr(44);
    std::vector<int> values;
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
        const auto low = static_cast<unsigned char>(data[i]);
        const auto high = static_cast<signed char>(data[i + 1]);
        values.push_back(high * 256 + low);
    }
    return values;
}

TEST(WriteWav, writesEveryByteOfTheHeader) {
    const ScratchFolder folder;
    writeWAV(std::vector<float>{0.5F, -0.5F, 0.0F}, folder / "a.wav");
    EXPECT_EQ(readBytes(folder / "a.wav"),
              "RIFF" + bytes({42, 0, 0, 0}) +      //
                  "WAVE" +                         //
                  "fmt " + bytes({16, 0, 0, 0}) +  //
                  bytes({1, 0}) +                  // PCM
                  bytes({1, 0}) +                  // one channel
                  bytes({0x80, 0xbb, 0, 0}) +      // 48000 frames a second
                  bytes({0x00, 0x77, 1, 0}) +      // 96000 bytes a second
                  bytes({2, 0}) + bytes({16, 0}) + // bytes a frame, bits a sample
                  "data" + bytes({6, 0, 0, 0}) +   //
                  bytes({0x00, 0x40}) + bytes({0x00, 0xc0}) + bytes({0, 0}));
}

TEST(WriteWav, keepsLoudSamplesWithinSixteenBits) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_THAT(writtenIntegers({1.0F, 2.0F, infinity, -1.0F, -2.0F, -infinity}),
                ElementsAre(32767, 32767, 32767, -32768, -32768, -32768));
}

TEST(WriteWav, writesZeroForWhatIsNoNumber) {
    EXPECT_THAT(writtenIntegers({std::numeric_limits<float>::quiet_NaN()}), ElementsAre(0));
}

TEST(WriteWav, roundsToTheNearestInteger) {
    EXPECT_THAT(writtenIntegers({0.4F / 32768, 0.6F / 32768, -0.4F / 32768, -0.6F / 32768}),
                ElementsAre(0, 1, 0, -1));
}

TEST(WriteWav, everySixteenBitValueReadsBackUnchanged) {
    const ScratchFolder folder;
    std::vector<float> samples;
    for (int value = -32768; value <= 32767; ++value) {
        samples.push_back(static_cast<float>(value) / 32768.0F);
    }
    writeWAV(samples, folder / "a.wav");
    EXPECT_EQ(loadAudio(folder / "a.wav"), samples);
}

TEST(WriteWav, writesAnEmptyFileOfTheRightForm) {
    const ScratchFolder folder;
    writeWAV({}, folder / "a.wav");
    EXPECT_EQ(readBytes(folder / "a.wav").size(), 44U);
}

TEST(WriteWav, replacesAFileAndLeavesNothingBesideIt) {
    const ScratchFolder folder;
    folder.write("a.wav", "something longer than the new file will ever be, by quite some way");
    writeWAV({}, folder / "a.wav");
    EXPECT_EQ(readBytes(folder / "a.wav").size(), 44U);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(WriteWav, aFailureIsSilent) {
    const ScratchFolder folder;
    writeWAV(std::vector<float>{0.5F}, folder / "missing/a.wav");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(WriteWav, saysWhetherItHasWritten) {
    const ScratchFolder folder;
    EXPECT_TRUE(writeWAV(std::vector<float>{0.5F}, folder / "a.wav"));
    EXPECT_FALSE(writeWAV(std::vector<float>{0.5F}, folder / "missing/a.wav"));
}

TEST(WriteFloatWav, writesEveryByteOfTheHeaderAndEverySampleAsItIs) {
    const ScratchFolder folder;
    ASSERT_FALSE(writeFloatWAV(std::vector<float>{1.0F, -1e-40F}, folder / "a.wav"));
    EXPECT_EQ(
        readBytes(folder / "a.wav"),
        "RIFF" + bytes({58, 0, 0, 0}) + "WAVEfmt " +
            bytes({18, 0, 0, 0, 3, 0, 1, 0, 0x80, 0xbb, 0, 0, 0, 0xee, 2, 0, 4, 0, 32, 0, 0, 0}) +
            "fact" + bytes({4, 0, 0, 0, 2, 0, 0, 0}) + "data" + bytes({8, 0, 0, 0}) +
            bytes({0, 0, 0x80, 0x3f, 0xc2, 0x16, 1, 0x80}));
}

TEST(WriteFloatWav, otherProgramsReadIt) {
    const ScratchFolder folder;
    const std::vector<float> samples{0.1F, 2.5F, -3.0F, 1e-20F};
    ASSERT_FALSE(writeFloatWAV(samples, folder / "a.wav"));
    EXPECT_EQ(loadAudio(folder / "a.wav"), samples);
}

TEST(WriteFloatWav, saysWhatWentWrong) {
    const ScratchFolder folder;
    EXPECT_EQ(writeFloatWAV(std::vector<float>{0.5F}, folder / "missing/a.wav"),
              std::errc::no_such_file_or_directory);
}

TEST(WriteWavDeathTest, moreSamplesThanThirtyTwoBitsCountIsFatal) {
    const ScratchFolder folder;
    const float sample = 0;
    // Only the count is looked at before the program stops.
    const std::span<const float> samples(&sample, std::size_t{1} << 32U);
    EXPECT_DEATH(writeWAV(samples, folder / "a.wav"), "more samples than 32 bits can count");
}

TEST(WriteWav, moreSamplesThanAFileCanHoldWritesNothing) {
    const ScratchFolder folder;
    const float sample = 0;
    const std::span<const float> samples(&sample, (std::size_t{1} << 31U));
    writeWAV(samples, folder / "a.wav");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace
} // namespace vornic
