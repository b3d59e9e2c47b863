// Sounds of the user's own keyboard, from the microphone or a file to the current board.

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/Required.h"
#include "tests/support/TypingNoise.h"

#include <gmock/gmock.h>

namespace vornic {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

class AppModelRecordingTest : public ModelFixture {
  protected:
    void SetUp() override { ASSERT_TRUE(startToPlay()); }

    static std::vector<float> typing() {
        return TypingNoise(2, 48000, 1e-4F).hit(0.3, 0.2F).hit(0.8, 0.8F).hit(1.4, 0.4F).samples();
    }

    /// Reads a file to the end.
    bool import(const std::filesystem::path& file) {
        model->recorder().importRecording(file);
        return eventually([&] { return !model->recorder().importProgress(); });
    }

    std::size_t usersSamples() const {
        return static_cast<std::size_t>(
            std::ranges::count(model->library().userSamples(), false, &SampleInfo::builtIn));
    }
};

TEST_F(AppModelRecordingTest, keysAreSilentWhileItRecords) {
    model->recorder().startRecording();
    EXPECT_TRUE(model->recording());
    EXPECT_EQ(model->silence(), Silence::recording);
    microphoneInput.hear(typing());
    model->recorder().stopRecording(true);
    EXPECT_FALSE(model->recording());
    EXPECT_EQ(model->importSession(), std::nullopt) << "it is cut on another thread";
    ASSERT_TRUE(eventually([&] { return model->importSession().has_value(); }));
    EXPECT_EQ(model->silence(), std::nullopt);
    const ImportSession session = required(model->importSession());
    EXPECT_EQ(session.name, "My keyboard");
    EXPECT_EQ(session.strokes.size(), 3U);
    EXPECT_EQ(model->lastError(), std::nullopt);
}

TEST_F(AppModelRecordingTest, theFinishedSoundIsOneEditOfACopyOfABuiltInBoard) {
    const Board before = *model->board();
    ASSERT_TRUE(before.builtIn);
    openSession(typing(), "My keyboard");
    model->recorder().select(1, false);
    const std::string id = required(model->finishImport());
    EXPECT_EQ(model->importSession(), std::nullopt);
    const Board& board = *model->board();
    EXPECT_EQ(board.name, before.name + " (mine)");
    ASSERT_EQ(board.sounds.size(), before.sounds.size() + 1);
    const SoundSpec& sound = board.sounds.back();
    EXPECT_EQ(sound.id, id);
    EXPECT_EQ(sound.name, "My keyboard");
    ASSERT_EQ(sound.press.layers.size(), 1U);
    EXPECT_EQ(sound.press.layers.front().part, LayerPart::bottomOut);
    EXPECT_EQ(sound.press.chain, ChainParams::neutral());
    const std::vector<SampleInfo> infos = model->library().userSamples();
    std::vector<std::string> ids;
    std::vector<std::string> names;
    for (const SampleInfo& info : infos) {
        if (!info.builtIn) {
            ids.push_back(info.id);
            names.push_back(info.name);
        }
    }
    EXPECT_EQ(sound.press.layers.front().samples, ids);
    EXPECT_EQ(names, (std::vector<std::string>{"My keyboard 1", "My keyboard 3"}));

    // One step takes all of it back; the samples stay the user's.
    EXPECT_TRUE(model->undo());
    EXPECT_EQ(model->board()->sounds, before.sounds);
    EXPECT_FALSE(model->canUndo());
    EXPECT_EQ(usersSamples(), 2U);
}

TEST_F(AppModelRecordingTest, theFinishedSoundOutlastsTheProgram) {
    openSession(typing(), "My keyboard");
    const std::string id = required(model->finishImport());
    const std::string board = model->board()->id;
    restart();
    EXPECT_EQ(model->board()->id, board);
    const SoundSpec* const sound = model->board()->sound(id);
    ASSERT_NE(sound, nullptr);
    for (const std::string& sample : sound->press.layers.front().samples) {
        EXPECT_TRUE(model->library().samples(sample)) << sample;
    }
    EXPECT_EQ(sound->press.layers.front().samples.size(), 3U);
}

TEST_F(AppModelRecordingTest, theFinishedSoundPlaysOnEveryKeyWhenAskedTo) {
    openSession(typing(), "My keyboard");
    const std::string id = required(model->finishImport());
    EXPECT_NE(model->board()->resolve(FakeTap::key)->sound->id, id);
    clock.advance(1);
    model->useForAllKeys(id);
    EXPECT_EQ(model->board()->resolve(FakeTap::key)->sound->id, id);
    scheduler.advance(150ms);
    EXPECT_TRUE(eventually([&] {
        return !model->sound().bank()->pool(VoiceBank::key(id, false, Velocity::medium)).empty();
    }));
    EXPECT_TRUE(model->undo());
    EXPECT_NE(model->board()->resolve(FakeTap::key)->sound->id, id);
    EXPECT_NE(model->board()->sound(id), nullptr);
}

TEST_F(AppModelRecordingTest, withEveryStrokeUntickedNothingIsAdded) {
    const Board before = *model->board();
    openSession(typing(), "My keyboard");
    for (std::size_t stroke = 0; stroke < 3; ++stroke) {
        model->recorder().select(stroke, false);
    }
    EXPECT_EQ(model->finishImport(), std::nullopt);
    EXPECT_EQ(model->importSession(), std::nullopt);
    EXPECT_EQ(*model->board(), before);
    EXPECT_EQ(usersSamples(), 0U);
    EXPECT_FALSE(model->canUndo());
}

TEST_F(AppModelRecordingTest, aCancelledSessionKeepsNothing) {
    const Board before = *model->board();
    EXPECT_EQ(model->finishImport(), std::nullopt);
    openSession(typing(), "My keyboard");
    model->cancelImport();
    EXPECT_EQ(model->importSession(), std::nullopt);
    EXPECT_EQ(model->finishImport(), std::nullopt);
    EXPECT_EQ(*model->board(), before);
    EXPECT_EQ(usersSamples(), 0U);
}

TEST_F(AppModelRecordingTest, saysWhyItCannotRecord) {
    microphoneInput.granted = false;
    model->recorder().startRecording();
    EXPECT_EQ(model->lastError(), "Vornic needs microphone access to record your keyboard.");
    EXPECT_FALSE(model->recording());
    microphoneInput.granted = true;
    microphoneInput.format.reset();
    model->recorder().startRecording();
    EXPECT_EQ(model->lastError(), "Couldn't start the microphone.");
    EXPECT_FALSE(model->recording());
    EXPECT_THAT(log.all(), HasSubstr("No microphone."));
}

TEST_F(AppModelRecordingTest, saysWhyThereIsNothingToChooseFrom) {
    EXPECT_FALSE(openSession(std::vector<float>(48000), "x"));
    EXPECT_EQ(model->lastError(), "No keystrokes found. Press keys one at a time, a little apart.");
    // One that is overdriven.
    EXPECT_FALSE(openSession(TypingNoise(1, 48000, 1e-4F).hit(0.4, 1.0F).samples(), "x"));
    EXPECT_EQ(model->lastError(), "The keystrokes were too quiet or too close together. Try again "
                                  "nearer the mic, one key at a time.");
    EXPECT_EQ(model->importSession(), std::nullopt);
}

TEST_F(AppModelRecordingTest, importsAFileOrSaysThatItCannot) {
    ASSERT_TRUE(import(scratch.write("a.wav", "no sound")));
    EXPECT_EQ(model->lastError(), "Couldn't read that file.");
    EXPECT_EQ(model->importSession(), std::nullopt);
    writeWAV(typing(), scratch / "Old board.wav");
    ASSERT_TRUE(import(scratch / "Old board.wav"));
    EXPECT_EQ(required(model->importSession()).name, "Old board");
}

TEST_F(AppModelRecordingTest, aMicrophoneThatGoesEndsTheRecordingAndTheSilence) {
    model->recorder().startRecording();
    microphoneInput.hear(typing());
    microphoneInput.lose();
    EXPECT_FALSE(model->recording());
    EXPECT_EQ(model->silence(), std::nullopt);
    EXPECT_TRUE(eventually([&] { return model->importSession().has_value(); }));
    EXPECT_EQ(model->lastError(),
              "The microphone is gone. What it heard until then has been kept.");
}

} // namespace
} // namespace vornic
