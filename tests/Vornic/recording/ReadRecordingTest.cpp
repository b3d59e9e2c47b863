#include "Vornic/recording/ReadRecording.h"

#include "Vornic/recording/DecoderProcess.h"
#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/strokes/Slicer.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>

namespace vornic {
namespace {

namespace fs = std::filesystem;

const fs::path fixtures = fs::path(VORNIC_SOURCE) / "tests/Vornic/recording";

class ReadRecordingTest : public testing::Test {
  protected:
    static RecordingRead read(const fs::path& file, ReadOptions options = {}) {
        options.decoder = VORNIC_DECODER;
        return readRecording(file, options);
    }

    /// A WAV file of silence that says it is `seconds` long and is as long as that.
    fs::path longFile(std::uint32_t seconds) const {
        const std::uint32_t bytes = seconds * 8000;
        const fs::path file = folder_ / "long.wav";
        std::ofstream stream(file, std::ios::binary);
        const auto number = [&](std::uint32_t value, std::size_t size) {
            for (std::size_t i = 0; i < size; ++i) {
                stream.put(static_cast<char>(value >> (8 * i)));
            }
        };
        stream << "RIFF";
        number(36 + bytes, 4);
        stream << "WAVEfmt ";
        number(16, 4);
        number(1, 2); // PCM
        number(1, 2); // mono
        number(8000, 4);
        number(8000, 4);
        number(1, 2);
        number(8, 2); // bits
        stream << "data";
        number(bytes, 4);
        stream.close();
        // Sparse: it takes no room on the disk.
        fs::resize_file(file, 44 + std::uintmax_t{bytes});
        return file;
    }

    ScratchFolder folder_;
};

TEST_F(ReadRecordingTest, readsWhatTheSampleLoaderReads) {
    const fs::path file = folder_ / "a.wav";
    writeWAV(TypingNoise(1, 48000, 0.1F).samples(), file);
    const RecordingRead recording = read(file);
    EXPECT_EQ(recording.samples, loadAudio(file));
    EXPECT_EQ(recording.remark, "");
}

TEST_F(ReadRecordingTest, tellsHowFarItIs) {
    const fs::path file = folder_ / "a.wav";
    writeWAV(std::vector<float>(48000), file);
    std::vector<double> shares;
    ReadOptions options;
    options.progress = [&](double share) { shares.push_back(share); };
    EXPECT_TRUE(read(file, options).samples);
    ASSERT_GT(shares.size(), 5U);
    EXPECT_TRUE(std::ranges::is_sorted(shares));
    EXPECT_GT(shares.front(), 0.0);
    EXPECT_LT(shares.front(), 0.2);
    EXPECT_EQ(shares.back(), 1.0);
}

TEST_F(ReadRecordingTest, readsAFileOfHoursOnlyAsFarAsItsLimit) {
    std::size_t blocks = 0;
    ReadOptions options;
    options.longestSeconds = 120;
    options.progress = [&](double) { ++blocks; };
    const RecordingRead recording = read(longFile(4 * 3600), options);
    EXPECT_EQ(required(recording.samples).size(), 120U * 48000U);
    EXPECT_EQ(recording.remark, "The file is longer than needed: only its first 2 minutes count.");
    // Blocks of 4096 samples at 8 kHz.
    EXPECT_LE(blocks, 121U * 8000U / 4096U + 2U);
}

TEST_F(ReadRecordingTest, readsTenMinutesWhole) {
    const RecordingRead recording = read(longFile(600));
    EXPECT_EQ(required(recording.samples).size(), 600U * 48000U);
    EXPECT_EQ(recording.remark, "");
    EXPECT_EQ(read(longFile(601)).remark,
              "The file is longer than needed: only its first 10 minutes count.");
}

TEST_F(ReadRecordingTest, stopsWhenAskedTo) {
    std::stop_source source;
    std::size_t blocks = 0;
    ReadOptions options;
    options.stop = source.get_token();
    options.progress = [&](double) {
        ++blocks;
        source.request_stop();
    };
    const RecordingRead recording = read(longFile(600), options);
    EXPECT_EQ(recording.samples, std::nullopt);
    EXPECT_EQ(recording.remark, "The import was cancelled.");
    EXPECT_EQ(blocks, 1U);
}

TEST_F(ReadRecordingTest, saysWhatIsWrongWithAFile) {
    const auto remark = [](const fs::path& file, const fs::path& decoder = VORNIC_DECODER) {
        ReadOptions options;
        options.decoder = decoder;
        const RecordingRead read = readRecording(file, options);
        EXPECT_EQ(read.samples, std::nullopt);
        return read.remark;
    };
    const fs::path text = folder_.write("a.txt", "no sound");
    EXPECT_EQ(remark(text), "It is no audio file that Vornic knows.");
    EXPECT_EQ(remark(text, ""),
              "Audio files are read by the helper vornic-decode, which is not installed.");
    EXPECT_EQ(remark(folder_ / "missing"), "It is no audio file that Vornic knows.");
    const fs::path pipe = folder_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(remark(pipe), "It is no audio file that Vornic knows.");
}

/// A helper of the test's own, to see what a bad one does.
class HelperTest : public ReadRecordingTest {
  protected:
    fs::path helper(const std::string& script) const {
        const fs::path file = folder_.write("helper", "#!/bin/sh\n" + script);
        fs::permissions(file, fs::perms::owner_all);
        return file;
    }
    RecordingRead readWith(const std::string& script) const {
        ReadOptions options;
        options.decoder = helper(script);
        return readRecording(folder_.write("a.m4a", "x"), options);
    }
    // 8000 Hz, no length; once it has been given the file.
    const std::string header = "head -c 1 >/dev/null\n"
                               R"(printf 'vornicD2\0\0\0\0\0\100\277\100\0\0\0\0\0\0\360\277')"
                               "\n";
    // A second.
    const std::string block = R"(printf '\0\0\0\0\100\037\0\0'; head -c 32000 /dev/zero)"
                              "\n";
    const std::string end = R"(printf '\1\0\0\0\0\0\0\0')"
                            "\n";
};

TEST_F(HelperTest, isNeededToTheEnd) {
    EXPECT_EQ(required(readWith(header + block + end).samples).size(), 48000U);
    EXPECT_EQ(readWith(header + block).remark, "It is damaged or cut short.");
    EXPECT_EQ(readWith(header + block + "kill -9 $$\n").remark, "It is damaged or cut short.");
    EXPECT_EQ(readWith(header + block + R"(printf '\2\0\0\0\0\0\0\0')").remark,
              "It is damaged or cut short.");
    EXPECT_EQ(readWith(header + R"(printf '\0\0\0\0\377\377\377\377'; cat /dev/zero)").remark,
              "It is damaged or cut short.");
    EXPECT_EQ(readWith(header + end).remark, "It holds no sound.");
}

TEST_F(HelperTest, isNotBelievedWithoutItsHeader) {
    for (const char* script : {"exit 0", "printf vornic", "head -c 1000 /dev/zero"}) {
        EXPECT_EQ(readWith(script).remark, "It is no audio file that Vornic knows.");
    }
    EXPECT_EQ(openWithDecoder(folder_ / "missing", folder_.write("a", "x")), nullptr);
}

TEST_F(HelperTest, thatNeverEndsIsReadOnlyAsFarAsNeeded) {
    ReadOptions options;
    options.longestSeconds = 2;
    options.decoder = helper(header + "while :; do " + block + "done\n");
    const RecordingRead read = readRecording(folder_.write("a.m4a", "x"), options);
    EXPECT_EQ(required(read.samples).size(), 96000U);
}

TEST_F(HelperTest, isEndedWhenTheImportIsCancelled) {
    std::stop_source source;
    ReadOptions options;
    options.stop = source.get_token();
    options.decoder = helper(header + block + "exec sleep 1000\n");
    options.progress = [&](double) { source.request_stop(); };
    EXPECT_EQ(readRecording(folder_.write("a.m4a", "x"), options).remark,
              "The import was cancelled.");
}

#ifdef VORNIC_LIBAV

TEST(Decoder, readsWhatPhonesRecord) {
    for (const char* name : {"typing.m4a", "typing.aac"}) {
        ReadOptions options;
        options.decoder = VORNIC_DECODER;
        const RecordingRead read = readRecording(fixtures / name, options);
        const std::vector<float> samples = required(read.samples);
        // Raw AAC has the encoder's run-up before its sound.
        EXPECT_NEAR(static_cast<double>(samples.size()) / 48000, 1.6, 0.08) << name;
        const auto strokes = Slicer::strokes(samples, 48000);
        ASSERT_EQ(strokes.size(), 3U) << name;
        EXPECT_NEAR(strokes[1].start - strokes[0].start, 0.45, 0.003) << name;
        EXPECT_NEAR(strokes[2].start - strokes[1].start, 0.45, 0.003) << name;
        if (std::string(name) == "typing.m4a") {
            // The coder smears what comes just before a stroke.
            EXPECT_NEAR(strokes[0].start, 0.3, 0.01);
        }
    }
}

#endif

TEST(Decoder, refusesWhatItDoesNotKnow) {
    const ScratchFolder folder;
    ReadOptions options;
    options.decoder = VORNIC_DECODER;
    for (const char* content : {"", "no sound", "#EXTM3U\n/etc/passwd\n"}) {
        EXPECT_EQ(readRecording(folder.write("a.m4a", content), options).remark,
                  "It is no audio file that Vornic knows.");
    }
}

TEST(Decoder, survivesDamagedFiles) {
    const ScratchFolder folder;
    const std::string good = readBytes(fixtures / "typing.m4a");
    ReadOptions options;
    options.decoder = VORNIC_DECODER;
    for (std::size_t place = 0; place < good.size(); place += 307) {
        std::string bad = good;
        bad[place] = static_cast<char>(~bad[place]);
        const RecordingRead read = readRecording(folder.write("bad.m4a", bad), options);
        if (read.samples) {
            EXPECT_LT(read.samples->size(), 48000U * 60U);
        } else {
            EXPECT_NE(read.remark, "");
        }
    }
    const RecordingRead half =
        readRecording(folder.write("half.m4a", good.substr(0, good.size() / 2)), options);
    EXPECT_TRUE(!half.samples || half.samples->size() < 48000U * 2U);
}

TEST(Decoder, isFoundBesideTheProgram) {
    const fs::path decoder = VORNIC_DECODER;
    EXPECT_EQ(findDecoder(decoder.parent_path() / "vornic"), decoder);
    const ScratchFolder folder;
    EXPECT_EQ(findDecoder(folder / "bin/vornic"), "");
    folder.write("lib/vornic/vornic-decode", "x");
    fs::create_directories(folder / "bin");
    EXPECT_EQ(fs::weakly_canonical(findDecoder(folder / "bin/vornic")),
              folder / "lib/vornic/vornic-decode");
}

} // namespace
} // namespace vornic
