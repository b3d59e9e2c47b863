#include "Vornic/recording/SoundMaker.h"

#include "VornicCore/audiofiles/WriteWav.h"
#include "tests/support/FakeMicrophone.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TypingNoise.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vornic {
namespace {

using namespace std::chrono_literals;
using Messages = std::vector<std::string>;

class SoundMakerTest : public testing::Test {
  protected:
    SoundMakerTest() {
        SoundMaker::Events events;
        events.changed = [this] { ++changes_; };
        events.recording = [this](bool on) { quiet_.push_back(on); };
        events.failed = [this](const std::string& message) { failures_.push_back(message); };
        events.noted = [this](const std::string& note) { notes_.push_back(note); };
        maker_ = std::make_unique<SoundMaker>(
            SoundMaker::Services{microphone_, scheduler_, clock_, library_, VORNIC_DECODER},
            events);
    }

    /// Waits until the recording that was stopped is cut.
    bool cut() {
        return waitFor([&] {
            scheduler_.run();
            return !maker_->importProgress();
        });
    }

    /// Time goes on by tenths of a second, as the timer's do.
    void pass(int tenths) {
        for (int i = 0; i < tenths; ++i) {
            clock_.advance(0.1);
            scheduler_.advance(100ms);
            scheduler_.run();
        }
    }

    static std::vector<float> typing() {
        return TypingNoise(2, 48000, 1e-4F).hit(0.3, 0.2F).hit(0.8, 0.8F).hit(1.4, 0.4F).samples();
    }

    ScratchFolder folder_;
    FakeMicrophone microphone_;
    ManualScheduler scheduler_;
    ManualClock clock_;
    SampleLibrary library_{{}, folder_ / "Samples"};
    int changes_ = 0;
    std::vector<bool> quiet_;
    Messages failures_;
    Messages notes_;
    std::unique_ptr<SoundMaker> maker_;
};

TEST_F(SoundMakerTest, recordsAndOffersTheStrokes) {
    maker_->startRecording();
    EXPECT_TRUE(maker_->isRecording());
    EXPECT_EQ(quiet_, std::vector<bool>{true});
    microphone_.hear(typing());
    maker_->stopRecording(true);
    EXPECT_FALSE(maker_->isRecording());
    EXPECT_EQ(quiet_, (std::vector<bool>{true, false}));
    EXPECT_EQ(maker_->session(), std::nullopt) << "it is cut on another thread";
    ASSERT_TRUE(cut());
    const ImportSession session = required(maker_->session());
    EXPECT_EQ(session.name, "My keyboard");
    EXPECT_EQ(session.strokes.size(), 3U);
    maker_->select(0, false);
    const FinishedImport finished = required(maker_->finishImport());
    EXPECT_EQ(finished.samples.size(), 2U);
    EXPECT_EQ(maker_->session(), std::nullopt);
    EXPECT_TRUE(failures_.empty());
}

TEST_F(SoundMakerTest, leavesOutWhatAGapHasTornAndTellsOfIt) {
    const std::vector<float> heard = typing();
    const auto torn = heard.begin() + 48000 * 82 / 100;
    maker_->startRecording();
    microphone_.hear({heard.begin(), torn});
    microphone_.drop(480);
    microphone_.hear({torn + 480, heard.end()});
    pass(5);
    EXPECT_EQ(maker_->live().good, 2U);
    maker_->stopRecording(true);
    ASSERT_TRUE(cut());
    EXPECT_EQ(required(maker_->session()).strokes.size(), 2U);
    EXPECT_EQ(maker_->gaps(), (std::vector<Gap>{{0.82, 0.01}}));
    EXPECT_EQ(maker_->remark(), "The recording has a gap: the computer was too busy to hear 10 ms "
                                "of it. Keystrokes beside it are left out.");
    EXPECT_EQ(notes_, Messages{maker_->remark()});
    maker_->startRecording();
    EXPECT_EQ(maker_->remark(), "");
}

TEST_F(SoundMakerTest, discardsARecordingThatIsNotToBeKept) {
    maker_->startRecording();
    microphone_.hear(typing());
    maker_->stopRecording(false);
    EXPECT_FALSE(maker_->isRecording());
    EXPECT_EQ(maker_->session(), std::nullopt);
    EXPECT_TRUE(failures_.empty());
    maker_->stopRecording(true);
    EXPECT_EQ(quiet_, (std::vector<bool>{true, false}));
}

TEST_F(SoundMakerTest, countsTheSecondsAndStopsByItself) {
    maker_->startRecording();
    EXPECT_EQ(maker_->secondsLeft(), 20);
    pass(9);
    EXPECT_EQ(maker_->secondsLeft(), 20);
    pass(2);
    EXPECT_EQ(maker_->secondsLeft(), 19);
    microphone_.hear(typing());
    pass(185);
    EXPECT_TRUE(maker_->isRecording());
    EXPECT_EQ(maker_->secondsLeft(), 1);
    pass(5);
    EXPECT_FALSE(maker_->isRecording());
    ASSERT_TRUE(cut());
    EXPECT_EQ(required(maker_->session()).strokes.size(), 3U);
    EXPECT_EQ(scheduler_.timers(), 0U);
}

TEST_F(SoundMakerTest, showsTheLevelAndTheStrokesSoFar) {
    maker_->startRecording();
    EXPECT_EQ(maker_->level(), 0.0F);
    microphone_.hear(typing());
    microphone_.hear({0.25F, -0.5F});
    pass(1);
    EXPECT_EQ(maker_->level(), 0.5F);
    EXPECT_EQ(maker_->live(), LiveStrokes());
    pass(5);
    EXPECT_EQ(maker_->live(), (LiveStrokes{3, StrokeVerdict::good}));
    maker_->stopRecording(false);
    EXPECT_EQ(maker_->level(), 0.0F);
    maker_->startRecording();
    EXPECT_EQ(maker_->live(), LiveStrokes());
}

TEST_F(SoundMakerTest, saysThatAccessWasDenied) {
    microphone_.granted = false;
    maker_->startRecording();
    EXPECT_EQ(failures_, Messages{"Vornic needs microphone access to record your keyboard."});
    EXPECT_FALSE(maker_->isRecording());
    EXPECT_TRUE(quiet_.empty());
}

TEST_F(SoundMakerTest, saysThatThereIsNoMicrophone) {
    microphone_.format.reset();
    maker_->startRecording();
    EXPECT_EQ(failures_, Messages{"Couldn't start the microphone."});
    EXPECT_EQ(notes_, Messages{"No microphone."});
    EXPECT_TRUE(quiet_.empty());
    EXPECT_EQ(scheduler_.timers(), 0U);
}

TEST_F(SoundMakerTest, saysThatARecordingHasNoStrokes) {
    maker_->startRecording();
    microphone_.hear(std::vector<float>(48000));
    maker_->stopRecording(true);
    ASSERT_TRUE(cut());
    EXPECT_EQ(failures_,
              Messages{"No keystrokes found. Press keys one at a time, a little apart."});
}

TEST_F(SoundMakerTest, keepsWhatItHeardWhenTheMicrophoneGoes) {
    maker_->startRecording();
    microphone_.hear(typing());
    microphone_.lose();
    EXPECT_FALSE(maker_->isRecording());
    EXPECT_EQ(quiet_, (std::vector<bool>{true, false}));
    ASSERT_TRUE(cut());
    EXPECT_EQ(required(maker_->session()).strokes.size(), 3U);
    EXPECT_EQ(failures_,
              Messages{"The microphone is gone. What it heard until then has been kept."});
}

TEST_F(SoundMakerTest, saysThatNothingWasHeardBeforeTheMicrophoneWent) {
    maker_->startRecording();
    microphone_.hear(std::vector<float>(48000));
    microphone_.lose();
    EXPECT_FALSE(maker_->isRecording());
    ASSERT_TRUE(cut());
    EXPECT_EQ(notes_, Messages{"The microphone is gone. What it heard until then has been kept."});
    EXPECT_EQ(failures_,
              Messages{"No keystrokes found. Press keys one at a time, a little apart."});
}

TEST_F(SoundMakerTest, waitsForTheMicrophoneWithoutHoldingUpAnything) {
    microphone_.answersAtOnce = false;
    maker_->startRecording();
    EXPECT_TRUE(maker_->isStarting());
    EXPECT_FALSE(maker_->isRecording());
    maker_->startRecording();
    microphone_.answer();
    EXPECT_FALSE(maker_->isStarting());
    EXPECT_TRUE(maker_->isRecording());
}

TEST_F(SoundMakerTest, letsGoOfTheMicrophoneThatItHasNotGotYet) {
    microphone_.answersAtOnce = false;
    maker_->startRecording();
    maker_->stopRecording(false);
    EXPECT_FALSE(maker_->isStarting());
    EXPECT_FALSE(microphone_.isOpen);
    microphone_.answer();
    EXPECT_FALSE(maker_->isRecording());
    EXPECT_TRUE(quiet_.empty());
    EXPECT_TRUE(failures_.empty());
}

TEST_F(SoundMakerTest, knowsWhetherTheTimeWasUp) {
    maker_->startRecording();
    microphone_.hear(typing());
    pass(201);
    ASSERT_TRUE(cut());
    ASSERT_TRUE(maker_->session());
    EXPECT_TRUE(maker_->timeWasUp());
    maker_->startRecording();
    EXPECT_FALSE(maker_->timeWasUp());
    microphone_.hear(typing());
    maker_->stopRecording(true);
    EXPECT_FALSE(maker_->timeWasUp());
}

TEST_F(SoundMakerTest, namesTheSoundAndItsSamplesAsTheUserDoes) {
    maker_->rename("nothing to name");
    maker_->startSession(typing(), "My keyboard");
    ASSERT_TRUE(cut());
    maker_->rename("Old one");
    const FinishedImport finished = required(maker_->finishImport());
    EXPECT_EQ(finished.name, "Old one");
    EXPECT_EQ(finished.samples.front().name, "Old one 1");
}

TEST_F(SoundMakerTest, aFileTakesThePlaceOfARecording) {
    writeWAV(typing(), folder_ / "Old.wav");
    maker_->startRecording();
    microphone_.hear(typing());
    maker_->importRecording(folder_ / "Old.wav");
    EXPECT_FALSE(maker_->isRecording());
    EXPECT_TRUE(waitFor([&] {
        scheduler_.run();
        return maker_->session().has_value();
    }));
    EXPECT_EQ(required(maker_->session()).name, "Old");
}

TEST_F(SoundMakerTest, importsAFile) {
    writeWAV(typing(), folder_ / "Old.wav");
    maker_->importRecording(folder_ / "Old.wav");
    EXPECT_EQ(maker_->importProgress(), 0.0);
    EXPECT_TRUE(waitFor([&] {
        scheduler_.run();
        return maker_->session().has_value();
    }));
    EXPECT_EQ(required(maker_->session()).name, "Old");
    EXPECT_EQ(maker_->importProgress(), std::nullopt);
    maker_->cancelImport();
    EXPECT_EQ(maker_->session(), std::nullopt);
    EXPECT_EQ(maker_->finishImport(), std::nullopt);
}

TEST_F(SoundMakerTest, saysThatAFileIsLongerThanItReads) {
    std::vector<float> samples = typing();
    samples.resize(std::size_t{601} * 48000);
    writeWAV(samples, folder_ / "Long.wav");
    maker_->importRecording(folder_ / "Long.wav");
    // A hundred megabytes of samples, also beside others who want the processor.
    EXPECT_TRUE(waitFor(
        [&] {
            scheduler_.run();
            return maker_->session().has_value();
        },
        std::chrono::minutes(1)));
    EXPECT_EQ(maker_->remark(), "The file is longer than needed: only its first 10 minutes count.");
    maker_->cancelImport();
    maker_->startRecording();
    EXPECT_EQ(maker_->remark(), "");
}

TEST_F(SoundMakerTest, saysThatAFileCannotBeRead) {
    maker_->importRecording(folder_.write("a.wav", "no sound"));
    EXPECT_TRUE(waitFor([&] {
        scheduler_.run();
        return !failures_.empty();
    }));
    EXPECT_EQ(failures_, Messages{"Couldn't read that file."});
    EXPECT_EQ(notes_.size(), 1U);
    EXPECT_EQ(maker_->importProgress(), std::nullopt);
}

TEST_F(SoundMakerTest, cancelsTheReadingOfAFile) {
    writeWAV(typing(), folder_ / "a.wav");
    maker_->importRecording(folder_ / "a.wav");
    maker_->cancelReading();
    scheduler_.run();
    EXPECT_EQ(maker_->importProgress(), std::nullopt);
    EXPECT_EQ(maker_->session(), std::nullopt);
    EXPECT_TRUE(failures_.empty());
}

TEST_F(SoundMakerTest, tellsTheViewsOfEveryChange) {
    const auto changesBy = [this](const auto& work) {
        changes_ = 0;
        work();
        return changes_;
    };
    EXPECT_GT(changesBy([&] { maker_->startRecording(); }), 0);
    EXPECT_GT(changesBy([&] { pass(1); }), 0);
    microphone_.hear(typing());
    EXPECT_GT(changesBy([&] { maker_->stopRecording(true); }), 0);
    EXPECT_GT(changesBy([&] { cut(); }), 0);
    EXPECT_GT(changesBy([&] { maker_->select(0, false); }), 0);
    EXPECT_GT(changesBy([&] { maker_->finishImport(); }), 0);
}

} // namespace
} // namespace vornic
