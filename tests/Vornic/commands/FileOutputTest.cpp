#include "Vornic/commands/FileOutput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <string>
#include <vector>

namespace vornic {
namespace {

namespace fs = std::filesystem;

/// Plays the numbers of the frames, scaled down, and notes the times of the calls.
class CountingSource final : public AudioOutput::Source {
  public:
    void render(std::int64_t frames, float* left, float* right,
                std::uint64_t nowNanos) VORNIC_REALTIME override {
        for (std::int64_t i = 0; i < frames; ++i) {
            left[i] = static_cast<float>(++played) / 65536.0F;
            right[i] = -left[i];
        }
        times.push_back(nowNanos);
    }
    void streamEnded() override {}

    int played = 0;
    std::vector<std::uint64_t> times;
};

class FileOutputTest : public ::testing::Test {
  protected:
    FileOutputTest() {
        std::string name = (fs::temp_directory_path() / "vornic-file-XXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~FileOutputTest() override { fs::remove_all(folder); }
    FileOutputTest(const FileOutputTest&) = delete;
    FileOutputTest& operator=(const FileOutputTest&) = delete;

    std::vector<std::string> filesLeft() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }
    static std::string bytesOf(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    static std::string play(const fs::path& path) {
        CountingSource source;
        FileOutput output(path);
        output.open(source);
        output.requestStart();
        for (int block = 0; block < 200; ++block) {
            output.renderBlock();
        }
        EXPECT_TRUE(output.finish()) << output.problem();
        return bytesOf(path);
    }

    fs::path folder;
    CountingSource source;
};

TEST_F(FileOutputTest, writesWhatIsRenderedAsStereoFloatsAt48000Hertz) {
    FileOutput output(folder / "a.wav");
    output.open(source);
    ASSERT_TRUE(output.requestStart());
    for (int block = 0; block < 300; ++block) {
        ASSERT_TRUE(output.renderBlock());
    }
    EXPECT_TRUE(filesLeft() != std::vector<std::string>{"a.wav"}) << "the name came too early";
    ASSERT_TRUE(output.finish());
    EXPECT_THAT(filesLeft(), ::testing::ElementsAre("a.wav"));
    EXPECT_EQ(output.frames(), 38400);

    SF_INFO info{};
    SNDFILE* file = sf_open((folder / "a.wav").c_str(), SFM_READ, &info);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(info.samplerate, 48000);
    EXPECT_EQ(info.channels, 2);
    EXPECT_EQ(info.format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(info.frames, 38400);
    std::vector<float> samples(std::size_t{2} * 38400);
    EXPECT_EQ(sf_readf_float(file, samples.data(), 38400), 38400);
    sf_close(file);
    for (std::size_t i = 0; i < 38400; ++i) {
        ASSERT_EQ(samples[2 * i], static_cast<float>(i + 1) / 65536.0F);
        ASSERT_EQ(samples[2 * i + 1], -samples[2 * i]);
    }
    EXPECT_EQ(output.peak(), 38400.0F / 65536.0F);
}

TEST_F(FileOutputTest, givesEveryBlockTheTimeAtWhichItWouldPlay) {
    FileOutput output(folder / "a.wav");
    output.open(source);
    output.requestStart();
    EXPECT_EQ(output.nanos(), FileOutput::startNanos);
    for (int block = 0; block < 376; ++block) {
        output.renderBlock();
    }
    EXPECT_EQ(source.times.front(), FileOutput::startNanos);
    EXPECT_EQ(source.times[1], FileOutput::startNanos + 2'666'666);
    EXPECT_EQ(source.times[375], FileOutput::startNanos + 1'000'000'000);
}

TEST_F(FileOutputTest, writesSilenceWhilePausedWithoutACall) {
    FileOutput output(folder / "a.wav");
    output.open(source);
    EXPECT_TRUE(output.renderBlock());
    EXPECT_EQ(source.played, 0);
    output.requestStart();
    output.renderBlock();
    output.pause();
    EXPECT_FALSE(output.isRunning());
    output.renderBlock();
    EXPECT_EQ(source.played, 128);
    EXPECT_EQ(output.frames(), 3 * 128);
}

TEST_F(FileOutputTest, equalSoundGivesEqualBytes) {
    const std::string first = play(folder / "a.wav");
    EXPECT_EQ(first, play(folder / "b.wav"));
    EXPECT_EQ(first.find("PEAK"), std::string::npos) << "holds the time of writing";
}

TEST_F(FileOutputTest, replacesAFormerFileOnlyWhenTheNewOneIsWhole) {
    std::ofstream(folder / "a.wav") << "former";
    {
        FileOutput output(folder / "a.wav");
        output.open(source);
        output.requestStart();
        output.renderBlock();
        EXPECT_EQ(bytesOf(folder / "a.wav"), "former");
        output.close();
    }
    EXPECT_EQ(bytesOf(folder / "a.wav"), "former");
    EXPECT_THAT(filesLeft(), ::testing::ElementsAre("a.wav"));
    play(folder / "a.wav");
    EXPECT_NE(bytesOf(folder / "a.wav"), "former");
}

TEST_F(FileOutputTest, aFolderThatIsMissingIsAProblemAndStartsNothing) {
    FileOutput output(folder / "missing" / "a.wav");
    output.open(source);
    EXPECT_FALSE(output.requestStart());
    EXPECT_FALSE(output.renderBlock());
    EXPECT_FALSE(output.finish());
    EXPECT_EQ(output.problem(), "Couldn't write " + (folder / "missing" / "a.wav").string() +
                                    ": No such file or directory");
}

TEST_F(FileOutputTest, aFullDiskIsAProblemAndLeavesNothing) {
    // A limit on the size of files stands in for the end of the disk.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{.rlim_cur = 300'000, .rlim_max = before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);

    FileOutput output(folder / "a.wav");
    output.open(source);
    output.requestStart();
    bool written = true;
    for (int block = 0; block < 1000; ++block) {
        written = output.renderBlock();
    }
    const bool finished = output.finish();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, formerHandler);

    EXPECT_FALSE(written);
    EXPECT_FALSE(finished);
    EXPECT_FALSE(output.requestStart());
    EXPECT_THAT(output.problem(), ::testing::HasSubstr("a.wav: File too large"));
    EXPECT_TRUE(filesLeft().empty());
}

TEST_F(FileOutputTest, aDiskThatIsFullAtTheLastMomentIsAProblemToo) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{.rlim_cur = 5000, .rlim_max = before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);

    FileOutput output(folder / "a.wav");
    output.open(source);
    output.requestStart();
    for (int block = 0; block < 10; ++block) {
        output.renderBlock();
    }
    const bool finished = output.finish();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, formerHandler);

    EXPECT_FALSE(finished);
    EXPECT_FALSE(output.problem().empty());
    EXPECT_TRUE(filesLeft().empty());
}

TEST_F(FileOutputTest, theFileHasTheRightsOfAnOrdinaryOne) {
    play(folder / "a.wav");
    std::ofstream(folder / "ordinary") << "x";
    EXPECT_EQ(fs::status(folder / "a.wav").permissions(),
              fs::status(folder / "ordinary").permissions());
}

} // namespace
} // namespace vornic
