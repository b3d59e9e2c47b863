// From a keyboard in front of a microphone to keys that sound like it: recorded keystrokes are
// played into a source, recorded, cut, kept, rendered and heard in the sink.

#include "Vornic/recording/OwnSound.h"

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "Vornic/linux/sound/PipeWireOutput.h"
#include "Vornic/recording/SoundMaker.h"
#include "Vornic/sound/SoundEngine.h"
#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/packs/SoundPack.h"
#include "VornicCore/render/BuildBoard.h"
#include "VornicCore/strokes/Slicer.h"
#include "tests/live/ChildProcess.h"
#include "tests/live/SinkCapture.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vornic {
namespace {

constexpr std::size_t keys = 6;

/// Recorded keystrokes of the pack "spring", 400 ms apart.
std::vector<float> recordedTyping() {
    const SoundPack pack = required(SoundPack::load(VORNIC_BUILT_PACKS "/spring"));
    std::vector<float> typing(48000 * 3);
    std::size_t at = 14400;
    for (std::size_t key = 0; key < keys; ++key) {
        const auto press = required(loadAudio(pack.files.at(KeyClass::regular).at(key)));
        for (std::size_t i = 0; i < press.size() && at + i < typing.size(); ++i) {
            typing[at + i] += press[i];
        }
        at += 19200;
    }
    return typing;
}

class OwnSoundLiveTest : public testing::Test {
  protected:
    int run(std::vector<std::string> command) const {
        return ChildProcess(std::move(command), ChildProcess::Environment{}, folder_ / "log")
            .wait();
    }

    /// The microphone hears the speakers while `file` is played.
    int playAloud(const std::filesystem::path& file) const {
        const std::string speakers = "vornic-test-sink:monitor_FL";
        const std::string microphone = "vornic-test-source:input_MONO";
        if (run({"pw-link", speakers, microphone}) != 0) {
            return -1;
        }
        const int status = run({"pw-play", "--target", "vornic-test-sink", file});
        run({"pw-link", "-d", speakers, microphone});
        return status;
    }

    ScratchFolder folder_;
    ManualScheduler scheduler_;
    MonotonicClock clock_;
};

TEST_F(OwnSoundLiveTest, isRecordedCutKeptAndHeard) {
    writeWAV(recordedTyping(), folder_ / "typing.wav");
    PipeWireMicrophone microphone(scheduler_);
    SampleLibrary library({}, folder_ / "Samples");
    std::vector<std::string> failures;
    SoundMaker maker({microphone, scheduler_, clock_, library, {}},
                     {[] {}, [](bool) {},
                      [&](const std::string& message) { failures.push_back(message); },
                      [&](const std::string& note) { failures.push_back(note); }});

    maker.startRecording();
    ASSERT_TRUE(waitFor([&] {
        scheduler_.run(); // the microphone answers
        return maker.isRecording();
    })) << testing::PrintToString(failures);
    ASSERT_EQ(playAloud(folder_ / "typing.wav"), 0);
    maker.stopRecording(true);
    ASSERT_TRUE(waitFor([&] {
        scheduler_.run(); // the strokes are cut
        return !maker.importProgress();
    }));
    EXPECT_TRUE(failures.empty()) << testing::PrintToString(failures);
    const ImportSession session = required(maker.session());
    // The way through the sound server changes nothing that the slicer looks at.
    const auto played = Slicer::strokes(required(loadAudio(folder_ / "typing.wav")), 48000);
    EXPECT_EQ(static_cast<std::size_t>(session.foundTotal), played.size());
    EXPECT_GE(session.strokes.size(), keys);
    maker.select(0, false);
    const FinishedImport finished = required(maker.finishImport());
    ASSERT_EQ(finished.samples.size(), session.strokes.size() - 1);

    // What is on the disk is enough: another run finds it.
    const SampleLibrary next({}, folder_ / "Samples");
    const SoundSpec sound = soundOf(finished);
    const Board board("own", "Own", "", "#FFFFFF", {}, {sound}, {});
    const RenderedBoard rendered = buildBoard(board, next, 2);
    const auto pool = rendered.bank->pool(VoiceBank::key(sound.id, false, Velocity::medium));
    ASSERT_FALSE(pool.empty());

    PipeWireOutput output(scheduler_);
    SoundEngine engine(output, clock_, [](const auto& work) { work(); });
    engine.setBank(rendered.bank);
    const SinkCapture capture({.sink = "vornic-test-sink",
                               .isSink = true,
                               .remote = {},
                               .quantum = 128,
                               .seconds = 10.0});
    ASSERT_TRUE(capture.waitUntilRunning());
    const std::size_t from = capture.frames();
    ASSERT_TRUE(waitFor([&] { return engine.ensureRunning(); }));
    EXPECT_TRUE(
        engine.core().play(pool.front(), 1.0F, 0.0F, 1.0F, clock_.nanos(), VoiceStage::none));
    EXPECT_TRUE(capture.waitFor(from, 0.01F).has_value());
}

} // namespace
} // namespace vornic
