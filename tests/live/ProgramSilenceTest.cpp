// Each reason to be silent switched on and off by the real thing, and the running program heard.

#include "tests/live/ProgramFixture.h"
#include "tests/live/TypedSound.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <chrono>
#include <csignal>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class ProgramSilenceTest : public ProgramFixture {
  protected:
    void SetUp() override {
        program = startListening({"--hidden", "--room", "dry"});
        ASSERT_TRUE(sound.waitUntilRunning());
        ASSERT_TRUE(sound.keysSoundWithin());
    }
    std::string silence() {
        const std::string said = run({"status", "--json"}).output;
        const std::string name = "\"silence\": ";
        const std::size_t at = said.find(name);
        return at == std::string::npos
                   ? said
                   : said.substr(at + name.size(), said.find(',', at) - at - name.size());
    }

    KeyTyper typer;
    TypedSound sound{[this] { typer.type(KEY_A); }};
    std::unique_ptr<ChildProcess> program;
};

TEST_F(ProgramSilenceTest, aPasswordFieldOfARealDialogSilencesItWhileItHasTheFocus) {
    const auto dialog = std::make_unique<ChildProcess>(
        std::vector<std::string>{VORNIC_PASSWORD_DIALOG},
        ChildProcess::Environment{{"QT_QPA_PLATFORM", "xcb"},
                                  {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"}},
        scratch / "dialog.log");
    // The dialog has no key when it begins, and then has it in the field for the name.
    ASSERT_TRUE(waitFor([&] {
        typer.type(KEY_TAB);
        typer.settle();
        return waitFor([&] { return silence() == "\"password\""; }, 300ms);
    }));
    EXPECT_FALSE(sound.keySounds());
    typer.type(KEY_TAB);
    EXPECT_TRUE(waitFor([&] { return silence() == "null"; }));
    EXPECT_TRUE(sound.keySounds());
    typer.type(KEY_TAB);
    EXPECT_TRUE(waitFor([&] { return silence() == "\"password\""; }));
    // Nobody tells that a killed program's field has the focus no more: it is found out in time.
    dialog->end(SIGKILL);
    EXPECT_TRUE(waitFor([&] { return silence() == "null"; }, 2s));
    EXPECT_TRUE(sound.keySounds());
}

TEST_F(ProgramSilenceTest, aProgramThatRecordsFromTheMicrophoneSilencesIt) {
    const auto recorder =
        std::make_unique<ChildProcess>(std::vector<std::string>{"pw-record", scratch / "call.wav"},
                                       ChildProcess::Environment{}, scratch / "recorder.log");
    ASSERT_TRUE(waitFor([&] { return silence() == "\"microphone\""; }));
    EXPECT_FALSE(sound.keySounds());
    recorder->end(SIGTERM);
    EXPECT_TRUE(waitFor([&] { return silence() == "null"; }, 1s));
    EXPECT_TRUE(sound.keySounds());
}

TEST_F(ProgramSilenceTest, theRealHotKeySilencesItAndBringsItBack) {
    const auto pressHotKey = [this] {
        for (const int key : {KEY_LEFTALT, KEY_LEFTMETA, KEY_K}) {
            typer.press(key);
        }
        for (const int key : {KEY_K, KEY_LEFTMETA, KEY_LEFTALT}) {
            typer.release(key);
        }
        typer.settle();
    };
    pressHotKey();
    ASSERT_TRUE(waitFor([&] { return silence() == "\"off\""; }));
    EXPECT_FALSE(sound.keySounds());
    pressHotKey();
    ASSERT_TRUE(waitFor([&] { return silence() == "null"; }));
    EXPECT_TRUE(sound.keySounds());
}

} // namespace
} // namespace vornic
