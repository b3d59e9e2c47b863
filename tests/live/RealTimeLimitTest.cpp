// An audio thread that does not sleep for longer than the system allows: the program goes on.

#include "Vornic/linux/sound/PipeWireOutput.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>

namespace vornic {
namespace {

using namespace std::chrono_literals;

/// What desktops allow a program's real-time threads, in microseconds: both limits, as the library
/// sets them.
constexpr rlim_t allowed = 200'000;

/// Asks for real time as a desktop grants it, and then does not sleep for 0.4 s.
class StallingSource final : public AudioOutput::Source {
  public:
    void render(std::int64_t frames, float* left, float* right,
                std::uint64_t /*nowNanos*/) VORNIC_REALTIME override {
        std::fill_n(left, frames, 0.0F);
        std::fill_n(right, frames, 0.0F);
        if (stalls.exchange(false)) {
            const sched_param first{.sched_priority = 10};
            granted = sched_setscheduler(0, SCHED_FIFO, &first) == 0;
            const auto end = std::chrono::steady_clock::now() + 400ms;
            while (std::chrono::steady_clock::now() < end) {
            }
            policy = sched_getscheduler(0);
            stalled = true;
        }
    }
    void streamEnded() override {}

    std::atomic<bool> stalls{false};
    std::atomic<bool> stalled{false};
    std::atomic<bool> granted{false};
    std::atomic<int> policy{-1};
};

TEST(RealTimeLimit, anAudioThreadThatIsStalledLosesItsPriorityAndPlaysOn) {
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_RTTIME, &before), 0);
    const rlimit limit{.rlim_cur = allowed, .rlim_max = allowed};
    ASSERT_EQ(setrlimit(RLIMIT_RTTIME, &limit), 0);
    PrivateSoundServer server;
    server.startServer();
    server.addSink("first");
    server.startSessionManager();
    ASSERT_TRUE(server.waitForDefaultSink("first"));
    QueueScheduler scheduler;
    StallingSource source;
    SoundServer connection(server.remote());
    PipeWireOutput output(scheduler, connection);
    output.open(source);
    ASSERT_TRUE(waitFor([&] { return output.requestStart() && output.renderCalls() > 0; }));
    EXPECT_FALSE(output.hasLostRealTime());
    source.stalls = true;
    ASSERT_TRUE(waitFor([&] { return source.stalled.load(); }));
    ASSERT_TRUE(source.granted) << "this test needs the right to real time: root, or RLIMIT_RTPRIO";
    EXPECT_EQ(source.policy, SCHED_OTHER);
    EXPECT_TRUE(output.hasLostRealTime());
    const std::uint64_t calls = output.renderCalls();
    EXPECT_TRUE(waitFor([&] { return output.renderCalls() > calls + 10; })) << "it plays on";
    // The limits are below each other still.
    rlimit after{};
    getrlimit(RLIMIT_RTTIME, &after);
    EXPECT_LT(after.rlim_cur, after.rlim_max);
    setrlimit(RLIMIT_RTTIME, &before);
}

} // namespace
} // namespace vornic
