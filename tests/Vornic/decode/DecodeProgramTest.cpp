// The real helper, started as the program starts it.

#include "Vornic/recording/DecoderProcess.h"
#include "Vornic/recording/ReadRecording.h"
#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/base/SplitMix64.h"
#include "tests/support/ProcessMemory.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TypingNoise.h"
#include "tests/support/WaitFor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vornic {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

class DecodeProgramTest : public testing::Test {
  protected:
    static RecordingRead read(const fs::path& file) {
        ReadOptions options;
        options.decoder = VORNIC_DECODER;
        return readRecording(file, options);
    }

    fs::path write(const std::string& name, int format) const {
        const std::vector<float> samples =
            TypingNoise(2, 48000, 1e-3F).hit(0.3, 0.2F).hit(1.1, 0.8F).samples();
        SF_INFO info{};
        info.samplerate = 48000;
        info.channels = 1;
        info.format = format;
        const fs::path file = folder_ / name;
        SNDFILE* const sound = sf_open(file.c_str(), SFM_WRITE, &info);
        EXPECT_NE(sound, nullptr) << name;
        sf_writef_float(sound, samples.data(), static_cast<sf_count_t>(samples.size()));
        sf_close(sound);
        return file;
    }

    /// Longer than any pipe: whoever decodes it waits until it is read.
    fs::path longFile() const {
        const fs::path file = folder_ / "long.wav";
        writeWAV(std::vector<float>(48000 * 60), file);
        return file;
    }

    /// Those that this test has started: other tests decode beside it.
    static std::vector<pid_t> decoders() {
        std::vector<pid_t> found = processesOf(VORNIC_DECODER);
        std::erase_if(found, [](pid_t process) {
            const std::string status =
                readBytes(fs::path("/proc") / std::to_string(process) / "status");
            return status.find("\nPPid:\t" + std::to_string(getpid()) + '\n') == std::string::npos;
        });
        return found;
    }

    ScratchFolder folder_;
};

TEST_F(DecodeProgramTest, readsWhatTheProgramItselfCouldRead) {
    const std::map<std::string, int> formats{{"a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                                             {"b.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT},
                                             {"a.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24},
                                             {"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
                                             {"a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
                                             {"a.opus", SF_FORMAT_OGG | SF_FORMAT_OPUS},
                                             {"a.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}};
    for (const auto& [name, format] : formats) {
        const fs::path file = write(name, format);
        EXPECT_EQ(required(read(file).samples), required(loadAudio(file))) << name;
    }
}

TEST_F(DecodeProgramTest, hasTheFileAndNothingElse) {
    const fs::path file = longFile();
    const auto stream = openWithDecoder(VORNIC_DECODER, file);
    ASSERT_NE(stream, nullptr);
    ASSERT_THAT(decoders(), SizeIs(1));
    const fs::path process = fs::path("/proc") / std::to_string(decoders()[0]);
    EXPECT_EQ(readBytes(process / "environ"), "");
    EXPECT_THAT(readBytes(process / "status"), HasSubstr("\nNoNewPrivs:\t1\n"));
    EXPECT_THAT(readBytes(process / "status"), HasSubstr("\nSeccomp:\t2\n"));
    std::map<std::string, std::string> open;
    for (const fs::directory_entry& entry : fs::directory_iterator(process / "fd")) {
        open.emplace(entry.path().filename(), fs::read_symlink(entry.path()));
    }
    EXPECT_THAT(open, ElementsAre(Pair("0", HasSubstr("socket:")), Pair("1", HasSubstr("pipe:")),
                                  Pair("2", "/dev/null"), Pair("3", file.string())));
    EXPECT_EQ(readBytes(process / "cmdline"), std::string(VORNIC_DECODER) + '\0')
        << "no file's name";
}

TEST_F(DecodeProgramTest, isGoneAtOnceWhenItIsNotWantedAnyMore) {
    auto stream = openWithDecoder(VORNIC_DECODER, longFile());
    ASSERT_THAT(decoders(), SizeIs(1));
    stream.reset();
    EXPECT_THAT(decoders(), IsEmpty());
}

TEST_F(DecodeProgramTest, readsOneFileAfterTheOtherInOneProcess) {
    const fs::path good = write("good.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    const fs::path cut = folder_.write("cut.wav", readBytes(good).substr(0, 3000));
    const fs::path other = folder_.write("other", "no sound at all");
    Decoder decoder(VORNIC_DECODER);
    ASSERT_TRUE(readRecording(good, decoder, {}).samples);
    const std::vector<pid_t> first = decoders();
    ASSERT_THAT(first, SizeIs(1));
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(readRecording(cut, decoder, {}).samples);
        EXPECT_FALSE(readRecording(other, decoder, {}).samples);
        EXPECT_FALSE(readRecording(folder_ / "missing", decoder, {}).samples);
        EXPECT_EQ(required(readRecording(good, decoder, {}).samples), required(loadAudio(good)));
    }
    EXPECT_EQ(decoders(), first) << "to the end";
}

TEST_F(DecodeProgramTest, startsAnewAfterAFileThatWasLeftOrEndedIt) {
    const fs::path good = write("good.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    Decoder decoder(VORNIC_DECODER);
    auto left = decoder.open(longFile());
    ASSERT_NE(left, nullptr);
    const std::vector<pid_t> first = decoders();
    left.reset();
    EXPECT_EQ(required(readRecording(good, decoder, {}).samples), required(loadAudio(good)));
    const std::vector<pid_t> second = decoders();
    ASSERT_THAT(second, SizeIs(1)) << "the first one does not linger";
    EXPECT_NE(second, first);
    ASSERT_EQ(::kill(second[0], SIGKILL), 0);
    // It may be told of the next file before it has gone; the one after that finds a fresh one.
    EXPECT_TRUE(waitFor([&] { return readRecording(good, decoder, {}).samples.has_value(); }));
}

TEST_F(DecodeProgramTest, endsWithAnErrorAndNothingElseForHostileFiles) {
    const std::string good = readBytes(write("good.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16));
    SplitMix64 random(20);
    for (const std::string& start :
         {std::string("RIFF\xff\xff\xff\x7fWAVEfmt "), std::string("fLaC\0\0\0\x22", 8),
          std::string("OggS\0\x02", 6), std::string("ID3\x04\0\0\x7f\x7f\x7f\x7f", 10),
          std::string("FORM\x7f\xff\xff\xf0"
                      "AIFFCOMM"),
          std::string("\0\0\0\x20"
                      "ftypM4A ",
                      12),
          good.substr(0, good.size() / 3)}) {
        std::string file = start;
        for (int byte = 0; byte < 5000; ++byte) {
            file.push_back(static_cast<char>(random.next(256)));
        }
        const RecordingRead result = read(folder_.write("hostile", file));
        if (result.samples) {
            EXPECT_LT(result.samples->size(), 600U * 48000U);
        } else {
            EXPECT_THAT(result.remark,
                        testing::AnyOf("It is no audio file that Vornic knows.",
                                       "It is damaged or cut short.", "It holds no sound."));
        }
        EXPECT_THAT(decoders(), IsEmpty());
    }
}

} // namespace
} // namespace vornic
