// The whole program in a Wayland session without XWayland: Weston without a screen, and keyboards
// of the kernel that exist only below libevdev and libudev.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "tests/live/ProgramFixture.h"
#include "tests/live/TypedSound.h"
#include "tests/live/evdev/MockKeyboards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdlib>

namespace vornic {
namespace {

using ::testing::HasSubstr;

class WaylandProgramTest : public ProgramFixture {
  protected:
    WaylandProgramTest() {
        EXPECT_TRUE(waitFor([] {
            return std::filesystem::exists(std::filesystem::path(std::getenv("XDG_RUNTIME_DIR")) /
                                           socketName);
        })) << readBytes(scratch / "weston.log");
        keyboards.plug(5);
    }

    /// What a Wayland session has, and what an X session has taken away.
    static ChildProcess::Environment session() {
        return {{"WAYLAND_DISPLAY", socketName},
                {"XDG_SESSION_TYPE", "wayland"},
                {"DISPLAY", ""},
                {"QT_QPA_PLATFORM", "wayland"},
                // Weston has no seat without a screen, and the toolkit's own input method ends a
                // program that asks for one.
                {"QT_IM_MODULE", "compose"},
                {"WAYLAND_DEBUG", "client"}};
    }
    std::unique_ptr<ChildProcess> startInSession(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.end(), {"--room", "dry"});
        return startListening(std::move(arguments), session());
    }
    nlohmann::json status() { return nlohmann::json::parse(run({"status", "--json"}).output); }

    void press(int code) {
        keyboards.send(keyboard, static_cast<std::uint16_t>(code), 1, clock.nanos());
    }
    void release(int code) {
        keyboards.send(keyboard, static_cast<std::uint16_t>(code), 0, clock.nanos());
    }
    void type(int code) {
        press(code);
        release(code);
    }
    void pressHotKey() {
        for (const int key : {KEY_LEFTALT, KEY_LEFTMETA, KEY_K}) {
            press(key);
        }
        for (const int key : {KEY_K, KEY_LEFTMETA, KEY_LEFTALT}) {
            release(key);
        }
    }

    static constexpr const char* socketName = "vornic-test-wayland";

    MonotonicClock clock;
    int keyboard = 5;
    MockKeyboards keyboards;
    ChildProcess weston{{"weston", "--backend=headless-backend.so", "--no-config", "--idle-time=0",
                         std::string("--socket=") + socketName},
                        {{"LD_PRELOAD", ""}, {"UMOCKDEV_DIR", ""}, {"DISPLAY", ""}},
                        scratch / "weston.log"};
};

TEST_F(WaylandProgramTest, keysOfTheKernelsKeyboardsSound) {
    const auto program = startInSession({"--hidden"});
    EXPECT_THAT(readBytes(log()), HasSubstr("keys from 1 of 1 keyboard"));
    TypedSound sound([this] { type(KEY_A); });
    ASSERT_TRUE(sound.waitUntilRunning());
    EXPECT_TRUE(sound.keysSoundWithin());
    EXPECT_EQ(status()["keys"], "listening");
    // One that is plugged in later is heard too.
    keyboards.unplug(5);
    keyboards.plug(keyboard = 6);
    EXPECT_TRUE(sound.keysSoundWithin());
}

TEST_F(WaylandProgramTest, theHotKeyIsMatchedInTheKeyReader) {
    const auto program = startInSession({"--hidden"});
    pressHotKey();
    EXPECT_TRUE(waitFor([&] { return status()["silence"] == "off"; }));
    pressHotKey();
    EXPECT_TRUE(waitFor([&] { return status()["silence"].is_null(); }));
}

TEST_F(WaylandProgramTest, theHotKeyForgetsTheModifiersOfAKeyboardThatWasUnplugged) {
    const auto program = startInSession({"--hidden"});
    const auto heard = [&] { return status()["pressed"].get<int>(); };
    press(KEY_LEFTALT);
    press(KEY_LEFTMETA);
    ASSERT_TRUE(waitFor([&] { return heard() == 2; }));
    keyboards.unplug(5);
    keyboards.plug(keyboard = 6);
    ASSERT_TRUE(waitFor([&] {
        type(KEY_A);
        return heard() > 2;
    }));
    const int before = heard();
    type(KEY_K);
    ASSERT_TRUE(waitFor([&] { return heard() > before; }));
    EXPECT_TRUE(status()["silence"].is_null());
    // Control held when a keyboard goes must not keep the combination from matching either.
    press(KEY_LEFTCTRL);
    keyboards.unplug(6);
    keyboards.plug(keyboard = 7);
    EXPECT_TRUE(waitFor([&] {
        pressHotKey();
        return status()["silence"] == "off";
    }));
}

TEST_F(WaylandProgramTest, itsWindowsOpen) {
    const auto program = startInSession();
    EXPECT_EQ(run({"--packs", packs().string()}).status, 0);
    EXPECT_TRUE(says("set_title(\"Vornic\")"));
    EXPECT_TRUE(says("org.vornic.Vornic")) << "the name by which a desktop finds its icon";
    EXPECT_EQ(status()["soundsOn"], true);
    program->send(SIGTERM);
    EXPECT_EQ(program->wait(), 0);
}

} // namespace
} // namespace vornic
