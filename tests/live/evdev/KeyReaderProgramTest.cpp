// The whole program in a Wayland session, with its keys from the real key reader.

#include "Vornic/linux/desktop/MonotonicClock.h"
#include "tests/live/ProgramFixture.h"
#include "tests/live/TypedSound.h"
#include "tests/live/evdev/FakeLogin.h"
#include "tests/live/evdev/MockKeyboards.h"
#include "tests/live/evdev/StartKeyReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <nlohmann/json.hpp>

#include <QCoreApplication>

namespace vornic {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class KeyReaderProgramTest : public ProgramFixture {
  protected:
    KeyReaderProgramTest() { keyboards.plug(5); }

    ChildProcess::Environment session() const {
        return {{"XDG_SESSION_TYPE", "wayland"},
                {"QT_QPA_PLATFORM", "offscreen"},
                {"VORNIC_KEY_READER", (scratch / "keys").string()}};
    }
    nlohmann::json status() { return nlohmann::json::parse(run({"status", "--json"}).output); }
    void type(std::uint16_t code) {
        keyboards.send(5, code, 1, clock.nanos());
        keyboards.send(5, code, 0, clock.nanos());
    }

    int count_ = 1;
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{count_, arguments_};
    MonotonicClock clock;
    MockKeyboards keyboards;
    FakeLogin login;
    std::unique_ptr<ChildProcess> reader =
        startKeyReader((scratch / "keys").string(),
                       std::filesystem::canonical(VORNIC_PROGRAM).string(), scratch / "reader.log");
};

TEST_F(KeyReaderProgramTest, keysSoundAsLongAsTheyMayBeHeard) {
    const auto program = startListening({"--hidden", "--room", "dry"}, session());
    EXPECT_TRUE(says("keys from 1 of 1 keyboard, read by vornic-keys"))
        << readBytes(log()) << readBytes(scratch / "reader.log");
    TypedSound sound([this] { type(KEY_A); });
    ASSERT_TRUE(sound.waitUntilRunning());
    EXPECT_TRUE(sound.keysSoundWithin());
    EXPECT_EQ(status()["keys"], "listening");
    EXPECT_THAT(readBytes(scratch / "reader.log"), Not(HasSubstr("refused")));
}

TEST_F(KeyReaderProgramTest, theDoctorLeavesTheRunningCopyItsKeys) {
    const auto program = startListening({"--hidden"}, session());
    ASSERT_TRUE(says("keys from 1 of 1 keyboard, read by vornic-keys"));
    const std::filesystem::path said = scratch / "doctor.log";
    start({"doctor", "--packs", packs().string()}, said, session())->wait();
    EXPECT_THAT(readBytes(said), HasSubstr("read by vornic-keys for another copy"));
    const int before = status()["pressed"].get<int>();
    EXPECT_TRUE(waitFor([&] {
        type(KEY_A);
        return status()["pressed"].get<int>() > before;
    }));
}

TEST_F(KeyReaderProgramTest, foreignCodeInTheProgramIsRefused) {
    auto environment = session();
    environment.emplace_back("LD_PRELOAD",
                             std::string("libumockdev-preload.so.0 ") + VORNIC_FOREIGN_CODE);
    const auto program = startWithClicks({"--hidden"}, environment);
    EXPECT_TRUE(waitFor([&] {
        return readBytes(scratch / "reader.log").find("refused foreign code") != std::string::npos;
    }));
}

} // namespace
} // namespace vornic
