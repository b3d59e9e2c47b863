// Boards change under the typing hands: no key is lost, no voice is cut.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "tests/live/KeyTyper.h"
#include "tests/live/ProgramFixture.h"
#include "tests/live/SinkCapture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <regex>
#include <string>
#include <thread>

namespace vornic {
namespace {

using namespace std::chrono_literals;

/// The faintest start of a press: silence has nothing at all.
constexpr float onsetLevel = 0.005F;

class BoardSwitchTest : public ProgramFixture {
  protected:
    /// The number behind `name` in what the program says at its end.
    int count(const std::string& name) {
        std::smatch found;
        const std::string text = readBytes(log());
        return std::regex_search(text, found, std::regex(name + ": (\\d+)")) ? std::stoi(found[1])
                                                                             : -1;
    }
};

TEST_F(BoardSwitchTest, switchingWhileTypingLosesNoKeyAndCutsNoVoice) {
    const auto program = start({"--hidden", "--packs", VORNIC_BUILT_PACKS}, log());
    ASSERT_TRUE(says("Vornic is listening")) << readBytes(log());
    SinkCapture capture(
        {.sink = "vornic-test-sink", .remote = {}, .quantum = 128, .seconds = 60.0});
    ASSERT_TRUE(capture.waitUntilRunning());
    KeyTyper typer;

    // Keys are silent until the first board is rendered.
    int before = 0;
    ASSERT_TRUE(waitFor([&] {
        const std::size_t from = capture.frames();
        typer.type(KeyTyper::letter(0));
        ++before;
        return capture.waitFor(from, onsetLevel, 300ms).has_value();
    }));

    constexpr int keys = 150;
    constexpr int switches = 9; // once through the six boards, and on
    std::jthread other([&] {
        for (int i = 0; i < switches; ++i) {
            EXPECT_EQ(run({"board", "next"}).status, 0);
        }
    });
    const MonotonicClock clock;
    for (int key = 0; key < keys; ++key) {
        typer.press(KeyTyper::letter(key % 26));
        typer.release(KeyTyper::letter(key % 26));
        ASSERT_TRUE(
            waitFor([&, from = clock.nanos()] { return clock.nanos() > from + 20'000'000; }));
    }
    other.join();
    typer.settle();
    program->end(SIGTERM);
    EXPECT_GE(count("Voices started"), keys + 1) << readBytes(log());
    EXPECT_LE(count("Voices started"), keys + before);
    EXPECT_EQ(count("stolen"), 0);
    EXPECT_EQ(count("dropped"), 0);
}

} // namespace
} // namespace vornic
