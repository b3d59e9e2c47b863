// A capture that is woken too late for cycles of the graph: what is lost is counted, at its place.

#include "Vornic/linux/microphone/PipeWireMicrophone.h"
#include "tests/live/PlayedMicrophone.h"
#include "tests/live/PrivateSoundServer.h"
#include "tests/support/QueueScheduler.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <semaphore>
#include <vector>

namespace vornic {
namespace {

/// The sample at place i stands for i + 1, so that each says where it belongs.
constexpr float step = 1.0F / (1 << 23);

std::vector<float> ramp(std::size_t count) {
    std::vector<float> samples(count);
    for (std::size_t i = 0; i < count; ++i) {
        samples[i] = static_cast<float>(i + 1) * step;
    }
    return samples;
}

std::int64_t placeOf(float sample) {
    return static_cast<std::int64_t>(sample / step);
}

/// Is held up in the middle of a capture, as by a computer that has no time for it.
class StalledTaker final : public MicrophoneInput::Taker {
  public:
    void take(const float* samples, std::int64_t count) VORNIC_REALTIME override {
        if (stalls_.exchange(false)) {
            mayGoOn_.acquire();
        }
        for (std::int64_t i = 0; i < count; ++i) {
            if (const std::int64_t place = placeOf(samples[i]); place != 0) {
                const std::int64_t ahead = place - (taken_ + missed_ + i);
                first_ = first_.value_or(ahead);
                furthest_ = std::max(furthest_.load(), std::abs(ahead - *first_));
            }
        }
        taken_ += count;
    }
    void miss(std::int64_t count) VORNIC_REALTIME override { missed_ += count; }

    void stall() { stalls_ = true; }
    [[nodiscard]] bool isStalled() const { return !stalls_; }
    void goOn() { mayGoOn_.release(); }
    [[nodiscard]] std::int64_t taken() const { return taken_; }
    [[nodiscard]] std::int64_t missed() const { return missed_; }
    /// How far a sample ever was from the place that belongs to it, by what was taken and missed.
    [[nodiscard]] std::int64_t furthest() const { return furthest_; }

  private:
    std::atomic<bool> stalls_{false};
    std::binary_semaphore mayGoOn_{0};
    std::atomic<std::int64_t> taken_{0};
    std::atomic<std::int64_t> missed_{0};
    std::atomic<std::int64_t> furthest_{0};
    std::optional<std::int64_t> first_;
};

class CaptureGapTest : public testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        server.start();
        keyboard.emplace(server.remote(), GetParam());
        ASSERT_TRUE(server.waitForDefaultSource("played-microphone"));
    }

    PrivateSoundServer server;
    std::optional<PlayedMicrophone> keyboard;
    QueueScheduler scheduler;
};

TEST_P(CaptureGapTest, everySampleIsHandedOverOrMissedAtItsPlace) {
    SoundServer connection(server.remote());
    PipeWireMicrophone microphone(scheduler, connection);
    ASSERT_TRUE(microphone.open()) << microphone.problem();
    StalledTaker taker;
    ASSERT_TRUE(microphone.start(taker));
    keyboard->play(ramp(48000 * 2));
    ASSERT_TRUE(waitFor([&] { return taker.taken() > 12000; }));
    const std::int64_t before = taker.missed();
    taker.stall();
    ASSERT_TRUE(waitFor([&] { return taker.isStalled(); }));
    // The keyboard goes on, and nobody hears it.
    ASSERT_TRUE(keyboard->waitUntilPast(48000));
    taker.goOn();
    ASSERT_TRUE(keyboard->waitUntilPlayed());
    const std::int64_t after = taker.taken();
    ASSERT_TRUE(waitFor([&] { return taker.taken() > after + 4096; }));
    microphone.stop();
    // Between the microphone and the stream a cycle may wait, or after a stall wait no more.
    EXPECT_LE(taker.furthest(), 2 * GetParam());
    EXPECT_GT(taker.missed() - before, 12000);
}

INSTANTIATE_TEST_SUITE_P(Cycles, CaptureGapTest, testing::Values(256, 2048));

} // namespace
} // namespace vornic
