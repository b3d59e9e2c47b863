#include "VornicCore/audiofiles/LoadAudio.h"

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace vornic {
namespace {

namespace fs = std::filesystem;

// Writes interleaved `samples` through the same library that most programs use.
void writeSound(const fs::path& file, int format, int rate, int channels,
                const std::vector<float>& samples) {
    SF_INFO info{};
    info.format = format;
    info.samplerate = rate;
    info.channels = channels;
    SNDFILE* sound = sf_open(file.c_str(), SFM_WRITE, &info);
    ASSERT_NE(sound, nullptr) << sf_strerror(nullptr);
    sf_command(sound, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    const auto frames = static_cast<sf_count_t>(samples.size()) / channels;
    EXPECT_EQ(sf_writef_float(sound, samples.data(), frames), frames);
    sf_close(sound);
}

// `channels` equal channels of a sine of amplitude 0.5.
std::vector<float> sine(double frequency, int rate, double seconds, int channels) {
    std::vector<float> samples;
    const int frames = static_cast<int>(seconds * rate);
    for (int i = 0; i < frames; ++i) {
        const auto value =
            static_cast<float>(0.5 * std::sin(2 * std::numbers::pi * frequency * i / rate));
        samples.insert(samples.end(), static_cast<std::size_t>(channels), value);
    }
    return samples;
}

// The largest difference from the sine of `frequency` at 48 kHz, away from both ends.
double sineError(const std::vector<float>& samples, double frequency) {
    double worst = 0;
    for (std::size_t i = 2000; i + 2000 < samples.size(); ++i) {
        const double wanted =
            0.5 * std::sin(2 * std::numbers::pi * frequency * static_cast<double>(i) / 48000);
        worst = std::max(worst, std::abs(wanted - static_cast<double>(samples[i])));
    }
    return worst;
}

// Root mean square of the middle half, where no codec is still settling.
double middleRms(const std::vector<float>& samples) {
    double sum = 0;
    const std::size_t quarter = samples.size() / 4;
    for (std::size_t i = quarter; i < 3 * quarter; ++i) {
        sum += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
    }
    return std::sqrt(sum / static_cast<double>(2 * quarter));
}

TEST(LoadAudio, aFileOf441kHzStereoLoadsAs48kHzMono) {
    const ScratchFolder folder;
    writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 2,
               sine(1000, 44100, 1, 2));
    const auto samples = required(loadAudio(folder / "a.wav"));
    EXPECT_NEAR(static_cast<double>(samples.size()), 48000, 1);
    // Right pitch, level and position to within the 16 bits of the source.
    EXPECT_LT(sineError(samples, 1000), 1e-4);
}

TEST(LoadAudio, readsEveryRate) {
    const ScratchFolder folder;
    for (const int rate : {8000, 11025, 22050, 32000, 44100, 88200, 96000, 192000}) {
        writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, rate, 1,
                   sine(440, rate, 0.5, 1));
        const auto samples = required(loadAudio(folder / "a.wav"));
        EXPECT_NEAR(static_cast<double>(samples.size()), 24000, 3) << rate;
        EXPECT_LT(sineError(samples, 440), 1e-4) << rate;
    }
}

TEST(LoadAudio, readsEveryFormat) {
    const ScratchFolder folder;
    for (const int format :
         {SF_FORMAT_WAV | SF_FORMAT_PCM_24, SF_FORMAT_AIFF | SF_FORMAT_PCM_16,
          SF_FORMAT_FLAC | SF_FORMAT_PCM_16, SF_FORMAT_OGG | SF_FORMAT_VORBIS,
          SF_FORMAT_OGG | SF_FORMAT_OPUS, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}) {
        writeSound(folder / "sound", format, 48000, 2, sine(1000, 48000, 1, 2));
        const auto samples = required(loadAudio(folder / "sound"));
        EXPECT_GE(samples.size(), 47900U) << std::hex << format;
        EXPECT_NEAR(middleRms(samples), 0.5 / std::numbers::sqrt2, 0.01) << std::hex << format;
    }
}

TEST(LoadAudio, oneFrameIsEnough) {
    const ScratchFolder folder;
    writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 1, {0.25F});
    EXPECT_EQ(loadAudio(folder / "a.wav"), std::vector<float>{0.25F});
    writeSound(folder / "b.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 1, {});
    EXPECT_FALSE(loadAudio(folder / "b.wav"));
}

TEST(LoadAudio, whatLiesBetweenTheLargestNumbersIsFiniteToo) {
    const ScratchFolder folder;
    std::vector<float> square(400, 3e38F);
    for (std::size_t i = 0; i < square.size(); ++i) {
        square[i] *= i / 20 % 2 == 0 ? 1.0F : -1.0F;
    }
    writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 8000, 1, square);
    const auto samples = required(loadAudio(folder / "a.wav"));
    EXPECT_TRUE(std::ranges::all_of(samples, [](float x) { return std::isfinite(x); }));
}

TEST(LoadAudio, averagesTheChannels) {
    const ScratchFolder folder;
    writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 3,
               {0.25F, 0.5F, 0.0F, -1.0F, 0.25F, 0.0F});
    EXPECT_EQ(loadAudio(folder / "a.wav"), (std::vector<float>{0.25F, -0.25F}));
}

TEST(LoadAudio, a48kHzMonoFileLoadsUnchanged) {
    const ScratchFolder folder;
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same every time
    std::uniform_real_distribution<float> any(-1.5F, 1.5F);
    std::vector<float> samples(10000);
    std::ranges::generate(samples, [&] { return any(random); });
    writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 1, samples);
    EXPECT_EQ(loadAudio(folder / "a.wav"), samples);
}

TEST(LoadAudio, sixteenBitSamplesAreTheirIntegerOver32768) {
    const ScratchFolder folder;
    const std::string header = [&] {
        writeWAV(std::vector<float>(3), folder / "a.wav");
        return readBytes(folder / "a.wav").substr(0, 44);
    }();
    folder.write("a.wav", header + std::string("\x00\x80\xff\x7f\x01\x00", 6));
    EXPECT_EQ(loadAudio(folder / "a.wav"),
              (std::vector<float>{-1.0F, 32767.0F / 32768.0F, 1.0F / 32768.0F}));
}

TEST(LoadAudio, samplesThatAreNoFiniteNumberBecomeZero) {
    const ScratchFolder folder;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float huge = std::numeric_limits<float>::max();
    writeSound(folder / "mono.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 1,
               {0.5F, nan, infinity, -infinity, 0.25F});
    EXPECT_EQ(loadAudio(folder / "mono.wav"), (std::vector<float>{0.5F, 0, 0, 0, 0.25F}));
    writeSound(folder / "stereo.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 48000, 2,
               {0.5F, nan, huge, huge});
    EXPECT_EQ(loadAudio(folder / "stereo.wav"), (std::vector<float>{0.25F, 0}));
}

TEST(LoadAudio, isNoneForWhatIsNoAudioFile) {
    const ScratchFolder folder;
    EXPECT_FALSE(loadAudio(folder / "missing.wav"));
    EXPECT_FALSE(loadAudio(folder.path()));
    EXPECT_FALSE(loadAudio(folder.write("empty.wav", "")));
    EXPECT_FALSE(loadAudio(folder.write("text.wav", "This is no sound at all, only text.")));
    EXPECT_FALSE(loadAudio("/dev/zero"));
}

TEST(LoadAudio, isNoneForAPipeAndDoesNotWaitForIt) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe.wav").c_str(), 0600), 0);
    EXPECT_FALSE(loadAudio(folder / "pipe.wav"));
}

TEST(LoadAudio, isNoneForAFileWithoutFrames) {
    const ScratchFolder folder;
    writeWAV({}, folder / "a.wav");
    EXPECT_FALSE(loadAudio(folder / "a.wav"));
}

TEST(LoadAudio, isNoneForAFileCutShort) {
    const ScratchFolder folder;
    for (const int format : {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_AIFF | SF_FORMAT_PCM_16,
                             SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
        writeSound(folder / "whole", format, 48000, 1, sine(440, 48000, 0.5, 1));
        const std::string whole = readBytes(folder / "whole");
        ASSERT_TRUE(loadAudio(folder / "whole"));
        for (const std::size_t size : {std::size_t{3}, std::size_t{11}, std::size_t{30},
                                       whole.size() / 2, whole.size() - 1000}) {
            EXPECT_FALSE(loadAudio(folder.write("cut", whole.substr(0, size))))
                << std::hex << format << " cut to " << std::dec << size;
        }
    }
}

TEST(LoadAudio, readsAFileWrittenToAPipeWithoutItsLength) {
    const ScratchFolder folder;
    writeSound(folder / "whole.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 48000, 1,
               sine(440, 48000, 0.5, 1));
    std::string bytes = readBytes(folder / "whole.wav");
    bytes.replace(4, 4, "\xff\xff\xff\xff");
    bytes.replace(bytes.find("data") + 4, 4, "\xff\xff\xff\xff");
    const auto samples = required(loadAudio(folder.write("piped.wav", bytes)));
    EXPECT_EQ(samples.size(), 24000U);
}

TEST(LoadAudio, isNoneForMoreThanTenMinutes) {
    const ScratchFolder folder;
    // 1 kHz, so that ten minutes are a small file.
    const std::vector<float> tenMinutes(600000, 0.0F);
    writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1000, 1, tenMinutes);
    const auto samples = required(loadAudio(folder / "a.wav"));
    EXPECT_NEAR(static_cast<double>(samples.size()), 600.0 * 48000, 100);
    writeSound(folder / "a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1000, 1,
               std::vector<float>(600001, 0.0F));
    EXPECT_FALSE(loadAudio(folder / "a.wav"));
}

TEST(LoadAudio, isNoneForRatesAndChannelsBeyondItsLimits) {
    const ScratchFolder folder;
    writeSound(folder / "slow.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 999, 1, {0.5F, 0.5F});
    EXPECT_FALSE(loadAudio(folder / "slow.wav"));
    writeSound(folder / "fast.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 768001, 1, {0.5F, 0.5F});
    EXPECT_FALSE(loadAudio(folder / "fast.wav"));
    writeSound(folder / "wide.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 48000, 65,
               std::vector<float>(65, 0.5F));
    EXPECT_FALSE(loadAudio(folder / "wide.wav"));
}

// Headers with any byte changed either load as something finite and bounded, or not at all.
TEST(LoadAudio, survivesEveryChangedByteOfAHeader) {
    const ScratchFolder folder;
    for (const int format : {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_AIFF | SF_FORMAT_PCM_16,
                             SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
        writeSound(folder / "whole", format, 44100, 2, sine(440, 44100, 0.02, 2));
        const std::string whole = readBytes(folder / "whole");
        for (std::size_t at = 0; at < 64; ++at) {
            for (const char value : {'\x00', '\x01', '\x7f', '\xff'}) {
                std::string changed = whole;
                changed[at] = value;
                const auto samples = loadAudio(folder.write("changed", changed));
                if (samples) {
                    EXPECT_LE(samples->size(), 600U * 48000U + 1000U);
                    EXPECT_TRUE(std::ranges::all_of(*samples, [](float x) {
                        return std::isfinite(x);
                    })) << at;
                }
            }
        }
    }
}

} // namespace
} // namespace vornic
