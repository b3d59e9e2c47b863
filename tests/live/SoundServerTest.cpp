// The one connection to the sound server, and those who live on it.

#include "Vornic/linux/soundserver/SoundServer.h"

#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "Vornic/linux/quiet/PipeWireMicrophoneUse.h"
#include "Vornic/linux/sound/PipeWireOutput.h"
#include "tests/live/PlayedMicrophone.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>

namespace vornic {
namespace {

using namespace std::chrono_literals;

class SilentSource final : public AudioOutput::Source {
  public:
    void render(std::int64_t frames, float* left, float* right,
                std::uint64_t /*nowNanos*/) VORNIC_REALTIME override {
        std::fill_n(left, frames, 0.0F);
        std::fill_n(right, frames, 0.0F);
    }
    void streamEnded() override {}
};

class CountingUser final : public SoundServer::User {
  public:
    void connected(pw_core*) override { ++made; }
    void unreachable() override { ++missing; }
    void disconnected() override { ++gone; }
    void work(bool) override { ++woken; }

    std::atomic<int> made{0};
    std::atomic<int> missing{0};
    std::atomic<int> gone{0};
    std::atomic<int> woken{0};
};

TEST(SoundServer, isOneConnectionForEverybody) {
    PrivateSoundServer server;
    server.startServer();
    server.addSink("speakers");
    server.addSource("mic");
    server.startSessionManager();
    ASSERT_TRUE(server.waitForDefaultSink("speakers"));
    ASSERT_TRUE(server.waitForDefaultSource("mic"));
    QueueScheduler scheduler;
    SoundServer connection(server.remote());
    SilentSource source;
    PipeWireOutput output(scheduler, connection);
    PipeWireMicrophoneUse use(scheduler, connection);
    PipeWireMicrophone microphone(scheduler, connection);
    output.open(source);
    use.start();
    ASSERT_TRUE(waitFor([&] { return output.problem().empty() && use.canCheck(); }));
    ASSERT_TRUE(microphone.open()) << microphone.problem();
    EXPECT_EQ(server.ownClients(), 1);
}

TEST(SoundServer, opensTheMicrophoneWhileTheOutputStarts) {
    PrivateSoundServer server;
    server.start();
    server.addSink("speakers");
    const PlayedMicrophone keyboard(server.remote());
    ASSERT_TRUE(server.waitForDefaultSink("speakers"));
    ASSERT_TRUE(server.waitForDefaultSource("played-microphone"));
    QueueScheduler scheduler;
    SilentSource source;
    SoundServer connection(server.remote());
    // They meet differently each time.
    for (int round = 0; round < 25; ++round) {
        PipeWireMicrophoneUse use(scheduler, connection);
        PipeWireMicrophone microphone(scheduler, connection);
        PipeWireOutput output(scheduler, connection);
        use.start();
        output.open(source);
        output.requestStart();
        ASSERT_TRUE(microphone.open()) << round << ": " << microphone.problem();
    }
}

TEST(SoundServer, everybodyIsBackAfterEachReturnOfTheServer) {
    PrivateSoundServer server;
    QueueScheduler scheduler;
    SoundServer connection(server.remote());
    SilentSource source;
    PipeWireOutput output(scheduler, connection);
    PipeWireMicrophoneUse use(scheduler, connection);
    output.open(source);
    use.start();
    for (int round = 0; round < 8; ++round) {
        server.start();
        server.addSink("speakers");
        server.addSource("mic");
        ASSERT_TRUE(waitFor([&] { return output.problem().empty() && use.canCheck(); })) << round;
        const std::uint64_t calls = output.renderCalls();
        ASSERT_TRUE(waitFor([&] { return output.requestStart() && output.renderCalls() > calls; }))
            << round;
        server.kill();
        ASSERT_TRUE(waitFor([&] { return !output.problem().empty() && !use.canCheck(); })) << round;
    }
}

TEST(SoundServer, tellsItsUsersWhenItComesAndGoes) {
    PrivateSoundServer server;
    SoundServer connection(server.remote());
    CountingUser early;
    connection.add(early);
    EXPECT_TRUE(waitFor([&] { return early.missing > 0; }));
    EXPECT_EQ(early.made, 0);
    server.startServer();
    EXPECT_TRUE(waitFor([&] { return early.made == 1; }));
    CountingUser late;
    connection.add(late);
    EXPECT_TRUE(waitFor([&] { return late.made == 1; }));
    const int woken = late.woken;
    connection.wake();
    EXPECT_TRUE(waitFor([&] { return late.woken > woken; }));
    connection.remove(late);
    EXPECT_EQ(late.gone, 1) << "at once";
    server.kill();
    EXPECT_TRUE(waitFor([&] { return early.gone == 1; }));
    server.startServer();
    EXPECT_TRUE(waitFor([&] { return early.made == 2; }));
    connection.remove(early);
    EXPECT_EQ(late.made, 1);
    EXPECT_EQ(late.gone, 1);
}

TEST(SoundServer, holdsNobodyUpWhileTheServerDoesNotAnswer) {
    PrivateSoundServer server;
    server.startServer();
    SoundServer connection(server.remote());
    CountingUser user;
    connection.add(user);
    ASSERT_TRUE(waitFor([&] { return user.made == 1; }));
    server.freeze();
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 100; ++i) {
        connection.remove(user);
        connection.add(user);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 500ms);
    server.thaw();
    connection.remove(user);
}

} // namespace
} // namespace vornic
