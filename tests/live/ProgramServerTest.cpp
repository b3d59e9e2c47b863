// The sound server dies under the typing hands and comes back.

#include "tests/live/PrivateSoundServer.h"
#include "tests/live/ProgramFixture.h"
#include "tests/live/TypedSound.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <thread>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class ProgramServerTest : public ProgramFixture {
  protected:
    void startServer() {
        server.startServer();
        server.addSink("first");
        server.startSessionManager();
        ASSERT_TRUE(server.waitForDefaultSink("first"));
    }

    PrivateSoundServer server;
};

TEST_F(ProgramServerTest, keysSoundAgainOnceTheKilledServerIsBack) {
    startServer();
    const std::string folder = std::filesystem::path(server.remote()).parent_path();
    const auto program =
        startListening({"--hidden", "--room", "dry"},
                       {{"PIPEWIRE_RUNTIME_DIR", folder}, {"PIPEWIRE_REMOTE", "pipewire-0"}});
    std::optional<TypedSound> sound;
    const auto listen = [&] {
        sound.emplace([] { KeyTyper().type(KEY_A); }, "first", server.remote());
    };
    listen();
    ASSERT_TRUE(sound->waitUntilRunning());
    ASSERT_TRUE(sound->keysSoundWithin());
    sound.reset();
    // From here on somebody types without a pause, whatever happens to the sound.
    std::jthread hands([](const std::stop_token& stop) {
        KeyTyper typer;
        while (!stop.stop_requested()) {
            typer.type(KEY_B);
            typer.settle();
            std::this_thread::sleep_for(15ms);
        }
    });
    for (int death = 0; death < 2; ++death) {
        server.kill();
        EXPECT_EQ(run({"status"}).status, 0) << "without a server";
        startServer();
    }
    hands.request_stop();
    hands.join();
    listen();
    ASSERT_TRUE(sound->waitUntilRunning());
    EXPECT_TRUE(sound->keysSoundWithin(20s));
    EXPECT_EQ(run({"status"}).status, 0);
}

} // namespace
} // namespace vornic
