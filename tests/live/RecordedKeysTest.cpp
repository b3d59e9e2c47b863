// A user's way to a sound of their own, with every part of the program but its windows: a keyboard
// is heard by the microphone, its strokes are kept, and keys of the X server play them.

#include "Vornic/app/AppModel.h"
#include "Vornic/linux/desktop/JournalLog.h"
#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/hotkey/X11HotKey.h"
#include "Vornic/linux/keys/X11KeyTap.h"
#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "Vornic/linux/quiet/PipeWireMicrophoneUse.h"
#include "Vornic/linux/sound/PipeWireOutput.h"
#include "Vornic/qt/QtScheduler.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/PlayedMicrophone.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/live/QtLoop.h"
#include "tests/live/SinkCapture.h"
#include "tests/support/ClickPack.h"
#include "tests/support/Required.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TypingNoise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <optional>
#include <string>
#include <vector>

namespace vornic {
namespace {

/// Nobody types a password here.
class NoPassword final : public SecureInput {
  public:
    void start() override {}
    bool active() const override { return false; }
    void noticeEverywhere(bool /*on*/) override {}
    PasswordFields told() const override { return PasswordFields::unknown; }
};

class RecordedKeysTest : public ::testing::Test {
  protected:
    RecordedKeysTest() { writeClickPack(folder / "packs"); }

    void SetUp() override {
        server.start();
        server.addSink("speakers");
        keyboard.emplace(server.remote());
        ASSERT_TRUE(server.waitForDefaultSink("speakers"));
        ASSERT_TRUE(server.waitForDefaultSource("played-microphone"));
    }

    SinkCapture::Options speakers() const {
        return {.sink = "speakers", .remote = server.remote(), .quantum = 128, .seconds = 60.0};
    }

    ModelOptions options() const {
        ModelOptions options;
        options.packs = folder / "packs";
        options.settingsFile = folder / "settings.json";
        options.boards = folder / "Boards";
        options.samples = folder / "Samples";
        return options;
    }

    /// Which share of what is heard from `from` on is the tone of 2 kHz that the recorded keyboard
    /// has; the clicks of the pack have next to nothing there.
    static double shareOfTone(const SinkCapture& capture, std::size_t from) {
        constexpr std::size_t frames = 480;
        std::complex<double> tone;
        double energy = 0.0;
        for (std::size_t i = 0; i < frames; ++i) {
            const auto x = static_cast<double>(capture.left(from + i));
            const double angle = 2.0 * std::numbers::pi * 2000.0 * static_cast<double>(i) / 48000.0;
            tone += x * std::polar(1.0, -angle);
            energy += x * x;
        }
        return 2.0 * std::norm(tone) / (energy * static_cast<double>(frames));
    }

    /// Types until something is heard, since keys are silent until the first board is rendered, and
    /// waits for enough of it.
    std::optional<std::size_t> hear(const SinkCapture& capture, int letter) {
        std::optional<std::size_t> onset;
        loop.waitFor([&] {
            const std::size_t from = capture.frames();
            typer.type(KeyTyper::letter(letter));
            typer.settle();
            onset = capture.waitFor(from, 0.02F, std::chrono::milliseconds(300));
            return onset.has_value();
        });
        return onset && waitFor([&] { return capture.frames() > *onset + 960; }) ? onset
                                                                                 : std::nullopt;
    }
    /// Runs the main thread until nothing of the last key is left.
    bool fallsSilent(const SinkCapture& capture) {
        std::size_t from = capture.frames();
        return loop.waitFor([&] {
            if (const auto sound = capture.find(from, 0.001F)) {
                from = *sound + 1;
            }
            return capture.frames() > from + 4800;
        });
    }

    ScratchFolder folder;
    PrivateSoundServer server;
    std::optional<PlayedMicrophone> keyboard;
    QtLoop loop;
    MonotonicClock clock;
    QtScheduler scheduler;
    JournalLog log;
    SoundServer connection{server.remote()};
    PipeWireOutput output{scheduler, connection};
    X11KeyTap tap{clock};
    X11HotKey hotKey;
    PipeWireMicrophoneUse microphoneUse{scheduler, connection};
    PipeWireMicrophone microphone{scheduler, connection};
    NoPassword secureInput;
    Platform platform{output, tap,       hotKey, microphoneUse, microphone, secureInput,
                      clock,  scheduler, log};
    KeyTyper typer;
};

TEST_F(RecordedKeysTest, playWhatTheMicrophoneHeard) {
    TypingNoise typing(3, 48000, 1e-4F);
    typing.hit(0.3, 0.5F).hit(0.9, 0.4F).hit(1.5, 0.3F).hit(2.1, 0.4F);
    std::string sound;
    {
        AppModel model(platform, options());
        model.start();
        const SinkCapture capture(speakers());
        ASSERT_TRUE(capture.waitUntilRunning());
        const auto click = hear(capture, 0);
        ASSERT_TRUE(click);
        EXPECT_LT(shareOfTone(capture, *click), 0.2);

        model.recorder().startRecording();
        ASSERT_TRUE(loop.waitFor([&] { return model.recording(); }))
            << model.lastError().value_or("");
        // The keys that are recorded are not heard on top of themselves.
        const std::int64_t keysBefore = model.keys().keysHeard();
        const std::int64_t voicesBefore = model.sound().core().keysStarted();
        typer.type(KeyTyper::letter(1));
        typer.settle();
        EXPECT_TRUE(loop.waitFor([&] { return model.keys().keysHeard() > keysBefore; }));
        EXPECT_EQ(model.sound().core().keysStarted(), voicesBefore);
        keyboard->play(typing.samples());
        ASSERT_TRUE(keyboard->waitUntilPlayed());
        // Once more only where the capture itself says that it has missed something.
        for (int attempt = 1; !model.recorder().gaps().empty() && attempt < 5; ++attempt) {
            model.recorder().stopRecording(false);
            model.recorder().startRecording();
            ASSERT_TRUE(loop.waitFor([&] { return model.recording(); }));
            keyboard->play(typing.samples());
            ASSERT_TRUE(keyboard->waitUntilPlayed());
        }
        EXPECT_TRUE(loop.waitFor([&] { return model.recorder().live().good == 4; }));
        EXPECT_EQ(model.recorder().gaps(), std::vector<Gap>());
        model.recorder().stopRecording(true);
        EXPECT_FALSE(model.recording());
        ASSERT_TRUE(loop.waitFor([&] { return model.importSession().has_value(); }));
        EXPECT_EQ(required(model.importSession()).strokes.size(), 4U);

        sound = required(model.finishImport());
        model.useForAllKeys(sound);
        ASSERT_TRUE(loop.waitFor([&] {
            const auto bank = model.sound().bank();
            return bank && !bank->pool(VoiceBank::key(sound, false, Velocity::medium)).empty();
        }));
        ASSERT_TRUE(fallsSilent(capture));
        const auto own = hear(capture, 2);
        ASSERT_TRUE(own);
        EXPECT_GT(shareOfTone(capture, *own), 0.3);
    }
    // The next start of the program plays it too.
    AppModel model(platform, options());
    model.start();
    ASSERT_NE(required(model.board()->resolve(0)).sound, nullptr);
    EXPECT_EQ(required(model.board()->resolve(0)).sound->id, sound);
    const SinkCapture capture(speakers());
    ASSERT_TRUE(capture.waitUntilRunning());
    const auto own = hear(capture, 3);
    ASSERT_TRUE(own);
    EXPECT_GT(shareOfTone(capture, *own), 0.3);
}

} // namespace
} // namespace vornic
