// A passphrase is typed somewhere else while the program runs; two seconds later nothing in the
// memory of its processes tells which keys it was. Needs root, or the right to trace them.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "Vornic/linux/x11/X11Connection.h"
#include "tests/live/KeyTraces.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/ProgramFixture.h"
#include "tests/support/ProcessMemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string_view>

namespace vornic {
namespace {

using ::testing::ContainsRegex;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace std::chrono_literals;

constexpr std::string_view passphrase = "thequickbrownfoxjumpsover";

std::string inWords(const KeyTraces& traces) {
    std::string words;
    for (const auto& [kind, keys] : traces) {
        words += kind + ": " + std::to_string(keys.size()) + " keys\n";
    }
    return words;
}

class ForgottenKeysTest : public ProgramFixture {
  protected:
    /// Types the passphrase as fast as somebody good.
    void type() {
        pressed_.from = clock_.nanos();
        for (const char letter : passphrase) {
            const int key = KeyTyper::letter(letter - 'a');
            pressed_.keys.insert(key);
            typer_.press(key);
            wait(20'000'000);
            typer_.release(key);
            wait(60'000'000);
        }
        typer_.settle();
        pressed_.until = clock_.nanos();
    }

    /// Gives the keys to a window that is none of the program's.
    void focusElsewhere() const {
        const xcb_window_t window = xcb_generate_id(elsewhere_.get());
        xcb_create_window(elsewhere_.get(), XCB_COPY_FROM_PARENT, window, elsewhere_.root(), 0, 0,
                          9, 9, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(elsewhere_.get(), window);
        ASSERT_TRUE(elsewhere_.succeeded(xcb_set_input_focus_checked(
            elsewhere_.get(), XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME)));
    }

    /// The promise is one about time.
    void wait(std::uint64_t nanos) const {
        const std::uint64_t end = clock_.nanos() + nanos;
        ASSERT_TRUE(waitFor([&] { return clock_.nanos() >= end; }));
    }

    /// In all processes of the program.
    KeyTraces traces() const {
        KeyTraces all;
        for (const std::string helper : {"vornic", "vornic-decode"}) {
            const auto program = std::filesystem::path(VORNIC_PROGRAM).parent_path() / helper;
            for (const pid_t process : processesOf(program)) {
                all.merge(keyTracesIn(process, pressed_));
            }
        }
        return all;
    }

    X11Connection elsewhere_{""};
    MonotonicClock clock_;
    KeyTyper typer_;
    PressedKeys pressed_;
};

TEST_F(ForgottenKeysTest, ofAPassphraseNothingIsLeftTwoSecondsLater) {
    const auto program = startListening({"--hidden", "--room", "dry"});
    ASSERT_THAT(processesOf(VORNIC_PROGRAM), SizeIs(1));
    type();
    wait(2'000'000'000);
    EXPECT_THAT(traces(), IsEmpty()) << inWords(traces());
    program->end(SIGTERM);
    EXPECT_THAT(readBytes(log()), ContainsRegex("Voices started: [1-9][0-9]"));
}

TEST_F(ForgottenKeysTest, noCoreIsWritten) {
    const auto program = startListening({"--hidden"});
    ASSERT_THAT(processesOf(VORNIC_PROGRAM), SizeIs(1));
    const auto process =
        std::filesystem::path("/proc") / std::to_string(processesOf(VORNIC_PROGRAM)[0]);
    EXPECT_THAT(readBytes(process / "limits"), ContainsRegex("Max core file size +1 +1 "));
}

TEST_F(ForgottenKeysTest, norWhileThePanelIsOpen) {
    const auto program = startListening({"--room", "dry"});
    focusElsewhere();
    type();
    wait(2'000'000'000);
    EXPECT_THAT(traces(), IsEmpty()) << inWords(traces());
}

} // namespace
} // namespace vornic
