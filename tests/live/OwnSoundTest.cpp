// From a keyboard in front of a microphone to keys that sound like it: recorded keystrokes are
// played into a source, recorded, cut, kept, rendered and heard in the sink.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "Vornic/linux/sound/PipeWireOutput.h"
#include "Vornic/recording/SoundMaker.h"
#include "Vornic/recording/StrokeImport.h"
#include "Vornic/sound/SoundEngine.h"
#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/packs/SoundPack.h"
#include "VornicCore/render/BuildBoard.h"
#include "VornicCore/strokes/Slicer.h"
#include "tests/live/PlayedMicrophone.h"
#include "tests/live/PrivateSoundServer.h"
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
    // With a silence behind the last of them: a capture ends a cycle or two before its stop.
    std::vector<float> typing(48000 * 3 + 24000);
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
    ScratchFolder folder_;
    ManualScheduler scheduler_;
    MonotonicClock clock_;
};

TEST_F(OwnSoundLiveTest, isRecordedCutKeptAndHeard) {
    const std::vector<float> typing = recordedTyping();
    PrivateSoundServer server;
    server.start();
    server.addSink("speakers");
    PlayedMicrophone keyboard(server.remote());
    ASSERT_TRUE(server.waitForDefaultSink("speakers"));
    ASSERT_TRUE(server.waitForDefaultSource("played-microphone"));
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler_, connection);
    SampleLibrary library({}, folder_ / "Samples");
    std::vector<std::string> failures;
    SoundMaker maker({microphone, scheduler_, clock_, library, {}},
                     {[] {}, [](bool) {},
                      [&](const std::string& message) { failures.push_back(message); },
                      [&](const std::string& note) { failures.push_back(note); }});

    // Once more only where the capture itself says that it has missed something.
    for (int attempt = 0; attempt == 0 || (attempt < 5 && !maker.gaps().empty()); ++attempt) {
        maker.stopRecording(false);
        maker.startRecording();
        ASSERT_TRUE(waitFor([&] {
            scheduler_.run(); // the microphone answers
            return maker.isRecording();
        })) << testing::PrintToString(failures);
        keyboard.play(typing);
        ASSERT_TRUE(keyboard.waitUntilPlayed());
    }
    maker.stopRecording(true);
    ASSERT_TRUE(waitFor([&] {
        scheduler_.run(); // the strokes are cut
        return !maker.importProgress();
    }));
    EXPECT_TRUE(failures.empty()) << testing::PrintToString(failures);
    const ImportSession session = required(maker.session());
    // The way through the sound server changes nothing that the slicer looks at.
    const auto played = Slicer::strokes(typing, 48000);
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

    PipeWireOutput output(scheduler_, connection);
    SoundEngine engine(output, clock_, [](const auto& work) { work(); });
    engine.setBank(rendered.bank);
    const SinkCapture capture({.sink = "speakers",
                               .isSink = true,
                               .remote = server.remote(),
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
