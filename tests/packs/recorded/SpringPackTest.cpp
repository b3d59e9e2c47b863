#include "packs/recorded/SpringPack.h"

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/packs/SoundPack.h"
#include "tests/packs/recorded/SyntheticStroke.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"

#include "packs/recorded/StrokeShape.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <numbers>
#include <span>

namespace vornic::packs {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Recordings as the tool finds them: 44.1 kHz, 16 bits.
class SpringPackTest : public testing::Test {
  protected:
    void record(const std::string& name, SyntheticStroke stroke) {
        stroke.rate = 44100;
        stroke.seed = ++seed_;
        write(name, synthesise(stroke));
    }

    void write(const std::string& name, const std::vector<float>& samples) {
        fs::create_directories(source_);
        SF_INFO info{};
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        info.samplerate = 44100;
        info.channels = 1;
        SNDFILE* file = sf_open((source_ / name).c_str(), SFM_WRITE, &info);
        ASSERT_NE(file, nullptr);
        sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
        sf_write_float(file, samples.data(), static_cast<sf_count_t>(samples.size()));
        sf_close(file);
    }

    SoundPack assemble() {
        assembly_ = assembleSpringPack(source_, target_);
        EXPECT_EQ(assembly_.error, "");
        const auto pack = SoundPack::load(target_);
        EXPECT_TRUE(pack);
        return pack.value_or(SoundPack{});
    }

    double levelOf(const std::string& name) {
        return strokeLevel(required(loadAudio(target_ / name)));
    }

    ScratchFolder folder_;
    fs::path source_ = folder_ / "recordings";
    fs::path target_ = folder_ / "Packs/spring";
    Assembly assembly_;
    unsigned seed_ = 0;
};

TEST_F(SpringPackTest, sortsAndNumbersTheStrokes) {
    for (const char* name : {"1e-1.wav", "1e-0.wav", "02-1.wav", "39-1.wav", "39-0.wav", "1c-1.wav",
                             "0e-1.wav", "2a-1.wav", "77-0.wav"}) {
        record(name, {});
    }
    const SoundPack pack = assemble();
    EXPECT_THAT(pack.files.at(KeyClass::regular),
                ElementsAre(target_ / "regular-01.wav", target_ / "regular-02.wav",
                            target_ / "regular-03.wav"));
    // Wide keys were recorded once: variants fill them up.
    for (const KeyClass keyClass : {KeyClass::space, KeyClass::enter, KeyClass::backspace}) {
        EXPECT_EQ(pack.files.at(keyClass).size(), 6U);
    }
    EXPECT_EQ(pack.files.at(KeyClass::modifier).size(), 1U);
    EXPECT_THAT(pack.releaseFiles,
                ElementsAre(target_ / "release-01.wav", target_ / "release-02.wav"));
    EXPECT_EQ(assembly_.written, 24U);
    EXPECT_THAT(assembly_.notes, IsEmpty());
}

TEST_F(SpringPackTest, namesThePackAndItsSource) {
    record("1e-1.wav", {});
    const SoundPack pack = assemble();
    EXPECT_EQ(pack.id(), "spring");
    EXPECT_EQ(pack.name(), "Buckling Spring");
    EXPECT_NE(pack.manifest.character, "");
    EXPECT_THAT(pack.manifest.credit, HasSubstr("Ico Doornekampt"));
    EXPECT_THAT(pack.manifest.credit, HasSubstr("GPL"));
}

TEST_F(SpringPackTest, everyStrokeBeginsAtOnce) {
    record("1e-1.wav", {.attackMs = 0});
    record("1f-1.wav", {.attackMs = 30});
    record("20-1.wav", {.attackMs = 40, .touchMs = 15});
    const SoundPack pack = assemble();
    for (const fs::path& file : pack.files.at(KeyClass::regular)) {
        const auto samples = required(loadAudio(file));
        EXPECT_LE(strokeOnset(samples, Stroke::press), millisecond * 3 / 2) << file;
    }
}

TEST_F(SpringPackTest, bringsEveryRegularPressToOneLevel) {
    record("1e-1.wav", {.amplitude = 0.02});
    record("1f-1.wav", {.amplitude = 0.3});
    record("20-1.wav", {.amplitude = 0.6, .offset = 0.01});
    const SoundPack pack = assemble();
    for (const fs::path& file : pack.files.at(KeyClass::regular)) {
        EXPECT_NEAR(levelOf(file.filename()), -24, 0.1) << file;
    }
}

TEST_F(SpringPackTest, rumbleAndOffsetAreGone) {
    std::vector<float> stroke = synthesise({.rate = 44100});
    for (std::size_t i = 0; i < stroke.size(); ++i) {
        const double phase = 2 * std::numbers::pi * 15 * static_cast<double>(i) / 44100;
        stroke[i] += static_cast<float>(0.05 + 0.05 * std::sin(phase));
    }
    write("1e-1.wav", stroke);
    assemble();
    const auto samples = required(loadAudio(target_ / "regular-01.wav"));
    ASSERT_GE(samples.size(), 200 * millisecond);
    // 100 ms in, the stroke has died away and the rumble would stand 40 dB above what is left.
    EXPECT_LT(decibels(rms(std::span(samples).subspan(100 * millisecond, 100 * millisecond))), -65);
}

TEST_F(SpringPackTest, otherClassesKeepTheirRelationToTheMedianRegularPress) {
    record("1e-1.wav", {.amplitude = 0.1});
    record("1f-1.wav", {.amplitude = 0.2});
    record("20-1.wav", {.amplitude = 0.8});
    record("39-1.wav", {.amplitude = 0.2});
    record("1c-1.wav", {.amplitude = 0.1});
    assemble();
    // A burst of random noise is not of exactly the level asked for.
    EXPECT_NEAR(levelOf("space-01.wav"), -24, 1.5);
    EXPECT_NEAR(levelOf("enter-01.wav"), -30, 1.5);
}

TEST_F(SpringPackTest, releasesAreSixDecibelsQuieterThanPresses) {
    record("1e-1.wav", {.amplitude = 0.2});
    record("1e-0.wav", {.amplitude = 0.7});
    record("1f-0.wav", {.amplitude = 0.05});
    assemble();
    EXPECT_NEAR(levelOf("release-01.wav"), -30, 0.1);
    EXPECT_NEAR(levelOf("release-02.wav"), -30, 0.1);
}

TEST_F(SpringPackTest, nothingPeaksAboveOneDecibelBelowFullScale) {
    // One sample far above a short stroke: its level alone would ask for much more gain.
    std::vector<float> stroke = synthesise({.rate = 44100, .amplitude = 0.01});
    stroke[900] = 0.5F;
    write("1e-1.wav", stroke);
    const SoundPack pack = assemble();
    const auto samples = required(loadAudio(pack.files.at(KeyClass::regular).front()));
    EXPECT_NEAR(decibels(static_cast<double>(peak(samples))), -1, 0.01);
}

TEST_F(SpringPackTest, leavesOutWhatIsOfNoUseAndSaysWhy) {
    record("1e-1.wav", {});
    fs::copy_file(source_ / "1e-1.wav", source_ / "1f-1.wav");
    record("20-1.wav", {.amplitude = 30});
    write("21-1.wav", std::vector<float>(13000, 0.0F));
    record("22-1.wav", {.secondMs = 220});
    std::ofstream(source_ / "23-1.wav") << "no sound";
    std::ofstream(source_ / "readme.txt") << "no recording";
    const SoundPack pack = assemble();
    EXPECT_EQ(pack.files.at(KeyClass::regular).size(), 1U);
    EXPECT_THAT(assembly_.notes,
                ElementsAre("1f-1.wav: repeats another", "20-1.wav: ran into full scale",
                            "21-1.wav: silent", "22-1.wav: holds a second stroke",
                            "23-1.wav: cannot be read"));
}

TEST_F(SpringPackTest, replacesAFormerPackWhole) {
    record("1e-1.wav", {});
    folder_.write("Packs/spring/regular-99.wav", "left over");
    const SoundPack pack = assemble();
    EXPECT_EQ(pack.files.at(KeyClass::regular).size(), 1U);
}

TEST_F(SpringPackTest, makesNoPackWithoutARegularPress) {
    record("39-1.wav", {});
    EXPECT_THAT(assembleSpringPack(source_, target_).error, HasSubstr("no usable press"));
    EXPECT_FALSE(fs::exists(target_));
    EXPECT_THAT(assembleSpringPack(folder_ / "missing", target_).error,
                HasSubstr("no usable press"));
}

TEST_F(SpringPackTest, saysWhenItCannotWrite) {
    record("1e-1.wav", {});
    folder_.write("Packs", "a file where the folder should be");
    EXPECT_THAT(assembleSpringPack(source_, target_).error, HasSubstr("cannot write"));
}

} // namespace
} // namespace vornic::packs
